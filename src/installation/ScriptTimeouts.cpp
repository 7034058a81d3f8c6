#include "installation/ScriptTimeouts.h"

#include <algorithm>

#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr double usualLongTimeout = 3600;
/// Longer waits would be beyond what clocks count.
constexpr double mostSeconds = 1e6;

}  // namespace

double secondsOf(std::initializer_list<Value> values, double otherwise) {
    for (const Value& value : values) {
        const std::string text = value.toText();
        if (text::isNumeric(text) && text::toNumber(text) > 0) {
            return std::min(text::toNumber(text), mostSeconds);
        }
    }
    return otherwise;
}

int normalTimeout(const HostContext& host) {
    const double seconds = secondsOf({host.session.get(sessionKey::scriptTimeoutNormal),
                                      host.application.get(applicationKey::scriptTimeoutNormal)},
                                     host.scriptTimeout);
    return static_cast<int>(std::max(seconds, 1.0));
}

double longTimeout(const HostContext& host) {
    return secondsOf({host.session.get(sessionKey::scriptTimeoutLong),
                      host.application.get(applicationKey::scriptTimeoutLong)},
                     usualLongTimeout);
}

LongScript::LongScript(HostContext& host) : host_(host), normal_(normalTimeout(host)) {
    host_.scriptTimeout = static_cast<int>(longTimeout(host_));
}

LongScript::~LongScript() {
    host_.scriptTimeout = normal_;
    if (host_.begin) *host_.begin += Deadline::Clock::now() - begin_;
}

}  // namespace torvex
