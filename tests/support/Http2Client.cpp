#include "support/Http2Client.h"

#include <algorithm>
#include <stdexcept>

#include "host/http/Answer.h"

namespace torvex::test {

namespace {

constexpr std::size_t frameHead = 9;
constexpr std::size_t mostInFrame = 16384;

/// A number of up to 2^28, behind the bits of `first`.
std::string prefixed(std::uint8_t first, int bits, std::size_t value) {
    const std::size_t most = (1U << bits) - 1;
    if (value < most) return std::string(1, static_cast<char>(first | value));
    std::string text(1, static_cast<char>(first | most));
    for (value -= most; value >= 128; value /= 128) text += static_cast<char>(value % 128 + 128);
    text += static_cast<char>(value);
    return text;
}

std::string literal(std::string_view text) {
    return prefixed(0, 7, text.size()).append(text);
}

std::uint32_t numberAt(std::string_view bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = at; i < at + 4 && i < bytes.size(); ++i)
        value = value * 256 + static_cast<unsigned char>(bytes[i]);
    return value;
}

nghttp2_hd_inflater* newInflater() {
    nghttp2_hd_inflater* made = nullptr;
    nghttp2_hd_inflate_new(&made);
    return made;
}

}  // namespace

std::uint32_t Frame::code() const {
    return numberAt(payload, type == NGHTTP2_GOAWAY ? 4 : 0);
}

std::string encoded(const Fields& fields) {
    std::string text;
    for (const auto& [name, value] : fields)
        text.append(1, '\0').append(literal(name)).append(literal(value));
    return text;
}

Fields get(std::string path, const Fields& more) {
    Fields fields{{":method", "GET"}, {":scheme", "https"}, {":authority", "a"}, {":path", std::move(path)}};
    fields.insert(fields.end(), more.begin(), more.end());
    return fields;
}

std::string number(std::uint32_t value) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) text += static_cast<char>(value >> shift & 255U);
    return text;
}

std::string setting(int id, std::uint32_t value) {
    std::string text(1, '\0');
    text += static_cast<char>(id);
    return text + number(value);
}

std::string frameOf(int type, int flags, std::int32_t id, std::string_view payload) {
    std::string text = number(static_cast<std::uint32_t>(payload.size())).substr(1);
    text += static_cast<char>(type);
    text += static_cast<char>(flags);
    return text.append(number(static_cast<std::uint32_t>(id))).append(payload);
}

Http2Client::Http2Client(std::uint16_t port, const std::string& from)
    : line_(connectTo(port, from), "\x02h2\x08http/1.1"), inflater_(newInflater()) {
    if (!line_.shakeHands() || line_.protocol() != "h2") throw std::runtime_error("HTTP/2 isn't spoken");
}

void Http2Client::greet(std::string_view settings) {
    send("PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n" + frameOf(NGHTTP2_SETTINGS, 0, 0, settings));
}

void Http2Client::headers(std::int32_t id, const Fields& fields, int flags) {
    std::string block = encoded(fields);
    int type = NGHTTP2_HEADERS;
    for (; block.size() > mostInFrame; block.erase(0, mostInFrame), type = NGHTTP2_CONTINUATION)
        frame(type, type == NGHTTP2_HEADERS ? flags & NGHTTP2_FLAG_END_STREAM : 0, id,
              std::string_view(block).substr(0, mostInFrame));
    frame(type, type == NGHTTP2_HEADERS ? flags : NGHTTP2_FLAG_END_HEADERS, id, block);
}

std::size_t Http2Client::room(std::int32_t id) const {
    const auto found = windows_.find(id);
    const std::int64_t own = streamWindow_ + (found == windows_.end() ? 0 : found->second);
    return static_cast<std::size_t>(std::max<std::int64_t>(std::min(own, ownWindow_), 0));
}

bool Http2Client::isEnded(std::int32_t id) const {
    return isAtEnd_ || std::any_of(kept_.begin(), kept_.end(), [id](const Frame& frame) {
               return frame.id == id && (frame.type == NGHTTP2_RST_STREAM || frame.isLast());
           });
}

void Http2Client::body(std::int32_t id, std::string_view bytes, bool isLast) {
    while (!bytes.empty() && !isEnded(id)) {
        const std::size_t size = std::min({bytes.size(), room(id), mostInFrame});
        if (size == 0) {
            if (!receive(patience)) return;
            while (auto frame = takeFrame()) kept_.push_back(std::move(*frame));
            continue;
        }
        const bool isEnd = isLast && size == bytes.size();
        frame(NGHTTP2_DATA, isEnd ? NGHTTP2_FLAG_END_STREAM : 0, id, bytes.substr(0, size));
        ownWindow_ -= static_cast<std::int64_t>(size);
        windows_[id] -= static_cast<std::int64_t>(size);
        bytes.remove_prefix(size);
        if (isEnd) isLast = false;
    }
    if (bytes.empty() && isLast) frame(NGHTTP2_DATA, NGHTTP2_FLAG_END_STREAM, id);
}

bool Http2Client::receive(std::chrono::milliseconds time) {
    if (isAtEnd_) return false;
    const auto bytes = line_.receive(time);
    if (bytes && bytes->empty()) isAtEnd_ = true;
    if (bytes) received_ += *bytes;
    return bytes && !bytes->empty();
}

std::optional<Frame> Http2Client::takeFrame() {
    if (received_.size() < frameHead) return std::nullopt;
    const std::size_t size = numberAt(received_, 0) >> 8;
    if (received_.size() < frameHead + size) return std::nullopt;
    Frame frame{static_cast<unsigned char>(received_[3]), static_cast<unsigned char>(received_[4]),
                static_cast<std::int32_t>(numberAt(received_, 5)), received_.substr(frameHead, size)};
    received_.erase(0, frameHead + size);
    heed(frame);
    return frame;
}

/// Headers can be read in the order alone in which they come.
void Http2Client::heed(Frame& frame) {
    if (frame.type == NGHTTP2_HEADERS) decode(frame);
    if (frame.type == NGHTTP2_SETTINGS && frame.flags == 0) heedSettings(frame);
    if (frame.type == NGHTTP2_WINDOW_UPDATE)
        (frame.id == 0 ? ownWindow_ : windows_[frame.id]) += numberAt(frame.payload, 0);
    if (frame.type != NGHTTP2_DATA || frame.payload.empty() || !givesRoom_) return;
    const std::string room = number(static_cast<std::uint32_t>(frame.payload.size()));
    this->frame(NGHTTP2_WINDOW_UPDATE, 0, 0, room);
    if (!frame.isLast()) this->frame(NGHTTP2_WINDOW_UPDATE, 0, frame.id, room);
}

void Http2Client::heedSettings(const Frame& frame) {
    for (std::size_t at = 0; at + 6 <= frame.payload.size(); at += 6)
        if (frame.payload[at + 1] == NGHTTP2_SETTINGS_INITIAL_WINDOW_SIZE)
            streamWindow_ = numberAt(frame.payload, at + 2);
    this->frame(NGHTTP2_SETTINGS, NGHTTP2_FLAG_ACK, 0);
}

std::optional<Frame> Http2Client::next(std::chrono::milliseconds time) {
    if (!kept_.empty()) {
        Frame first = std::move(kept_.front());
        kept_.pop_front();
        return first;
    }
    const auto end = std::chrono::steady_clock::now() + time;
    while (true) {
        if (auto frame = takeFrame()) return frame;
        const auto left = end - std::chrono::steady_clock::now();
        if (left.count() <= 0 || !receive(std::chrono::ceil<std::chrono::milliseconds>(left)))
            return std::nullopt;
    }
}

Frame Http2Client::awaitAny(const std::function<bool(const Frame&)>& isWanted) {
    if (const auto found = std::find_if(kept_.begin(), kept_.end(), isWanted); found != kept_.end()) {
        Frame frame = std::move(*found);
        kept_.erase(found);
        return frame;
    }
    std::deque<Frame> others;
    others.swap(kept_);
    Frame wanted;
    while (auto frame = next()) {
        if (isWanted(*frame)) {
            wanted = std::move(*frame);
            break;
        }
        others.push_back(std::move(*frame));
    }
    kept_.swap(others);
    return wanted;
}

Frame Http2Client::await(int type, std::int32_t id) {
    return awaitAny([&](const Frame& frame) { return frame.type == type && (id < 0 || frame.id == id); });
}

RawReply Http2Client::reply(std::int32_t id) {
    RawReply reply;
    while (true) {
        const Frame frame = awaitAny([id](const Frame& one) {
            return one.id == id && (one.type == NGHTTP2_HEADERS || one.type == NGHTTP2_DATA ||
                                    one.type == NGHTTP2_RST_STREAM);
        });
        if (frame.type < 0 || frame.type == NGHTTP2_RST_STREAM) return reply;
        if (frame.type == NGHTTP2_HEADERS) reply.status = frame.status;
        if (frame.type == NGHTTP2_HEADERS) reply.head = frame.head;
        if (frame.type == NGHTTP2_DATA) reply.body += frame.payload;
        if (frame.isLast() || (frame.type == NGHTTP2_HEADERS && reply.status == 100)) return reply;
    }
}

RawReply Http2Client::ask(const std::string& path, const Fields& more) {
    const std::int32_t id = std::exchange(nextId_, nextId_ + 2);
    headers(id, get(path, more));
    return reply(id);
}

void Http2Client::decode(Frame& headers) {
    std::string text;
    const auto* at = reinterpret_cast<const std::uint8_t*>(headers.payload.data());
    std::size_t left = headers.payload.size();
    while (true) {
        nghttp2_nv field{};
        int flags = 0;
        const ssize_t used = nghttp2_hd_inflate_hd2(inflater_.get(), &field, &flags, at, left, 1);
        if (used < 0) throw std::runtime_error("a header that can't be read");
        at += used;
        left -= static_cast<std::size_t>(used);
        if ((flags & NGHTTP2_HD_INFLATE_EMIT) != 0) {
            const std::string name(reinterpret_cast<const char*>(field.name), field.namelen);
            const std::string value(reinterpret_cast<const char*>(field.value), field.valuelen);
            if (name == ":status") {
                headers.status = std::stoi(value);
            } else {
                text.append(name).append(": ").append(value).append("\r\n");
            }
        }
        if ((flags & NGHTTP2_HD_INFLATE_FINAL) != 0) break;
        if ((flags & NGHTTP2_HD_INFLATE_EMIT) == 0 && left == 0) break;
    }
    nghttp2_hd_inflate_end_headers(inflater_.get());
    headers.head = "HTTP/2.0 " + std::to_string(headers.status) + " " +
                   std::string(statusName(headers.status)) + "\r\n" + text + "\r\n";
}

std::int64_t Http2Client::goodbye() {
    const Frame frame = await(NGHTTP2_GOAWAY);
    if (frame.type >= 0) return frame.code();
    return isAtEnd_ ? -1 : -2;
}

bool Http2Client::isSentAway() {
    while (receive(std::chrono::milliseconds(0))) {
    }
    while (auto frame = takeFrame()) kept_.push_back(std::move(*frame));
    return isAtEnd_ || std::any_of(kept_.begin(), kept_.end(),
                                   [](const Frame& frame) { return frame.type == NGHTTP2_GOAWAY; });
}

bool Http2Client::isClosedWithin(std::chrono::milliseconds time) {
    const auto end = std::chrono::steady_clock::now() + time;
    while (!isAtEnd_ && std::chrono::steady_clock::now() < end) receive(std::chrono::milliseconds(20));
    return isAtEnd_;
}

}  // namespace torvex::test
