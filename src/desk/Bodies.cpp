// desk: the bodies of a page, and whether its visitors see them.

#include "desk/TwinBodies.h"
#include "desk/desk.h"
#include "platform/Errors.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::size_t bodyColumns = 6;

std::vector<Value> lineOf(int bodyId, const TwinBodies& bodies) {
    const PageBody& body = bodies.design;
    return {bodyId,
            kindOfBody(body),
            isFeed(body) ? body.feedId : 0,
            bodies.feedTitle,
            isFeed(body) ? 0.0 : static_cast<double>(text::length(body.text)),
            bodies.differ()};
}

}  // namespace

Value desk::getBodies(const std::string& pageIdent) try {
    ResultGrid grid(bodyColumns);
    for (const auto& [bodyId, bodies] : twinBodiesOf(connection(), pageIdFrom(connection(), pageIdent))) {
        grid.add(lineOf(bodyId, bodies));
    }
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getBodies !");
}

}  // namespace torvex
