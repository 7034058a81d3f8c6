#include "host/http2/Session.h"

#include <algorithm>
#include <array>
#include <new>
#include <utility>

namespace torvex::http2 {

namespace {

constexpr std::size_t recordSize = 16 * 1024;  ///< of TLS: what is sent at a time
constexpr std::size_t frameHead = 9;
constexpr std::size_t leastFrame = 1024;  ///< of a body, unless less is left of it

/// What may be on its way of one body and of all: at a distance of 100 ms some 2.5 and 10 MB a second. None of it waits
/// here, as bodies are put away as they come.
constexpr std::uint32_t bodyWindow = 256 * 1024;
constexpr std::int32_t connectionWindow = 1024 * 1024;

/// Answers to settings and pings that a client lets wait.
constexpr std::size_t mostAcks = 200;

Session& sessionOf(void* user) {
    return *static_cast<Session*>(user);
}

std::string_view textOf(const std::uint8_t* bytes, std::size_t size) {
    return {reinterpret_cast<const char*>(bytes), size};
}

/// Throws when the memory for it isn't there: nothing else of what is given here can fail.
void check(int result) {
    if (result == NGHTTP2_ERR_NOMEM) throw std::bad_alloc();
}

using Options = std::unique_ptr<nghttp2_option, decltype(&nghttp2_option_del)>;
using CallbackTable = std::unique_ptr<nghttp2_session_callbacks, decltype(&nghttp2_session_callbacks_del)>;

Options makeOptions() {
    nghttp2_option* made = nullptr;
    check(nghttp2_option_new(&made));
    Options options(made, nghttp2_option_del);
    nghttp2_option_set_no_auto_window_update(made, 1);
    nghttp2_option_set_no_closed_streams(made, 1);
    nghttp2_option_set_max_outbound_ack(made, mostAcks);
    // Counted here, with all else that brings nothing forward.
    nghttp2_option_set_stream_reset_rate_limit(made, 1'000'000, 1'000'000);
    return options;
}

}  // namespace

template <class Action>
int Session::guarded(Action&& action) {
    try {
        return action();
    } catch (...) {
        failure_ = std::current_exception();
        return NGHTTP2_ERR_CALLBACK_FAILURE;
    }
}

/// What the library calls.
struct Session::Callbacks {
    static int begin(nghttp2_session*, const nghttp2_frame* frame, void* user) {
        Session& session = sessionOf(user);
        return session.guarded([&] { return session.onBegin(*frame); });
    }
    static int field(nghttp2_session*, const nghttp2_frame* frame, const std::uint8_t* name,
                     std::size_t nameSize, const std::uint8_t* value, std::size_t valueSize, std::uint8_t,
                     void* user) {
        Session& session = sessionOf(user);
        return session.guarded(
            [&] { return session.onField(*frame, textOf(name, nameSize), textOf(value, valueSize)); });
    }
    /// Left alone, the library would pass over such a field.
    static int invalidField(nghttp2_session*, const nghttp2_frame*, const std::uint8_t*, std::size_t,
                            const std::uint8_t*, std::size_t, std::uint8_t, void*) {
        return NGHTTP2_ERR_TEMPORAL_CALLBACK_FAILURE;
    }
    static int frame(nghttp2_session*, const nghttp2_frame* frame, void* user) {
        Session& session = sessionOf(user);
        return session.guarded([&] { return session.onFrame(*frame), 0; });
    }
    static int body(nghttp2_session*, std::uint8_t, std::int32_t id, const std::uint8_t* bytes,
                    std::size_t size, void* user) {
        Session& session = sessionOf(user);
        return session.guarded([&] { return session.onBody(id, textOf(bytes, size)), 0; });
    }
    static int given(nghttp2_session*, const nghttp2_frame* frame, void* user) {
        Session& session = sessionOf(user);
        return session.guarded([&] { return session.onGiven(*frame), 0; });
    }
    static int closed(nghttp2_session*, std::int32_t id, std::uint32_t, void* user) {
        Session& session = sessionOf(user);
        return session.guarded([&] {
            if (StreamEvents* stream = session.streamOf(id)) stream->onClosed();
            return 0;
        });
    }
    static ssize_t readBody(nghttp2_session*, std::int32_t, std::uint8_t*, std::size_t most,
                            std::uint32_t* flags, nghttp2_data_source* source, void* user) {
        const std::uint64_t unsent = static_cast<StreamEvents*>(source->ptr)->unsent();
        const std::size_t size = sessionOf(user).sizeOfNext(unsent, most);
        *flags |= NGHTTP2_DATA_FLAG_NO_COPY;
        if (size == unsent) *flags |= NGHTTP2_DATA_FLAG_EOF;
        return static_cast<ssize_t>(size);
    }
    static int sendBody(nghttp2_session*, nghttp2_frame*, const std::uint8_t* head, std::size_t size,
                        nghttp2_data_source* source, void* user) {
        Session& session = sessionOf(user);
        auto& stream = *static_cast<StreamEvents*>(source->ptr);
        return session.guarded([&] { return session.giveBody(head, stream, size); });
    }

    static CallbackTable table() {
        nghttp2_session_callbacks* made = nullptr;
        check(nghttp2_session_callbacks_new(&made));
        CallbackTable callbacks(made, nghttp2_session_callbacks_del);
        nghttp2_session_callbacks_set_on_begin_headers_callback(made, begin);
        nghttp2_session_callbacks_set_on_header_callback(made, field);
        nghttp2_session_callbacks_set_on_invalid_header_callback(made, invalidField);
        nghttp2_session_callbacks_set_on_frame_recv_callback(made, frame);
        nghttp2_session_callbacks_set_on_data_chunk_recv_callback(made, body);
        nghttp2_session_callbacks_set_on_frame_send_callback(made, given);
        nghttp2_session_callbacks_set_on_stream_close_callback(made, closed);
        nghttp2_session_callbacks_set_send_data_callback(made, sendBody);
        return callbacks;
    }
};

Session::Session(SessionEvents& events, std::uint32_t streams, std::size_t headerSize)
    : events_(events), budget_(std::chrono::steady_clock::now()) {
    const Options options = makeOptions();
    const CallbackTable callbacks = Callbacks::table();
    nghttp2_session* made = nullptr;
    check(nghttp2_session_server_new2(&made, callbacks.get(), this, options.get()));
    session_.reset(made);
    introduce(streams, headerSize);
}

void Session::introduce(std::uint32_t streams, std::size_t headerSize) {
    const std::array<nghttp2_settings_entry, 4> settings{
        {{NGHTTP2_SETTINGS_MAX_CONCURRENT_STREAMS, streams},
         {NGHTTP2_SETTINGS_INITIAL_WINDOW_SIZE, bodyWindow},
         {NGHTTP2_SETTINGS_MAX_HEADER_LIST_SIZE, static_cast<std::uint32_t>(headerSize)},
         {NGHTTP2_SETTINGS_NO_RFC7540_PRIORITIES, 1}}};
    check(nghttp2_submit_settings(session_.get(), NGHTTP2_FLAG_NONE, settings.data(), settings.size()));
    check(nghttp2_session_set_local_window_size(session_.get(), NGHTTP2_FLAG_NONE, 0, connectionWindow));
}

StreamEvents* Session::streamOf(std::int32_t id) const {
    return static_cast<StreamEvents*>(nghttp2_session_get_stream_user_data(session_.get(), id));
}

void Session::take(std::string_view bytes) {
    if (isEnded_) return;
    scanner_.scan(bytes, [this](const FrameScanner::Head& head) { look(head); });
    const ssize_t count = nghttp2_session_mem_recv(
        session_.get(), reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    rethrow();
    if (count == NGHTTP2_ERR_FLOODED) sendAway("it lets answers to pings and settings pile up");
    if (count == NGHTTP2_ERR_BAD_CLIENT_MAGIC) end(NGHTTP2_PROTOCOL_ERROR);
    if (count < 0) end(NGHTTP2_INTERNAL_ERROR);
}

/// What the library passes over unseen: priorities, which aren't heeded here, and what it doesn't know.
void Session::look(const FrameScanner::Head& head) {
    const bool isPriority = head.type == NGHTTP2_PRIORITY;
    if (isPriority || head.type > NGHTTP2_CONTINUATION) spend(FrameBudget::other);
    if (isPriority && head.id == 0) end(NGHTTP2_PROTOCOL_ERROR);
    if (isPriority && head.size != 5) end(NGHTTP2_FRAME_SIZE_ERROR);
}

void Session::give(std::string& out) {
    out_ = &out;
    const std::uint8_t* bytes = nullptr;
    ssize_t count = 1;
    while (count > 0 && out.size() + leastFrame < recordSize) {
        count = nghttp2_session_mem_send(session_.get(), &bytes);
        if (count > 0) out.append(textOf(bytes, static_cast<std::size_t>(count)));
    }
    out_ = nullptr;
    rethrow();
    if (count < 0) throw std::bad_alloc();
}

void Session::rethrow() {
    if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
}

int Session::onBegin(const nghttp2_frame& frame) {
    if (frame.headers.cat != NGHTTP2_HCAT_REQUEST) return 0;
    const std::int32_t id = frame.hd.stream_id;
    share(id);
    if (StreamEvents* stream = events_.onRequest(id))
        return nghttp2_session_set_stream_user_data(session_.get(), id, stream);
    reset(id, NGHTTP2_REFUSED_STREAM);
    return NGHTTP2_ERR_TEMPORAL_CALLBACK_FAILURE;
}

/// All streams have their turns, a frame each, whatever the client asks for: none waits behind a long download.
void Session::share(std::int32_t id) {
    const nghttp2_extpri inTurns{NGHTTP2_EXTPRI_DEFAULT_URGENCY, 1};
    check(nghttp2_session_change_extpri_stream_priority(session_.get(), id, &inTurns, 1));
}

/// Fields behind a body are dropped: nothing may come in there that the header's checks have not seen.
int Session::onField(const nghttp2_frame& frame, std::string_view name, std::string_view value) {
    StreamEvents* const stream = streamOf(frame.hd.stream_id);
    if (!stream || frame.headers.cat != NGHTTP2_HCAT_REQUEST || stream->onField(name, value)) return 0;
    sendAway("it sends far longer headers than header_bytes in [limits] lets through");
    return NGHTTP2_ERR_TEMPORAL_CALLBACK_FAILURE;
}

void Session::onBody(std::int32_t id, std::string_view bytes) {
    if (StreamEvents* stream = streamOf(id)) {
        stream->onBody(bytes);
    } else {
        consumeOfConnection(bytes.size());
    }
}

void Session::onFrame(const nghttp2_frame& frame) {
    switch (frame.hd.type) {
        case NGHTTP2_HEADERS:
        case NGHTTP2_DATA:
            return onStreamFrame(frame);
        case NGHTTP2_RST_STREAM:
            return spend(FrameBudget::reset);
        case NGHTTP2_SETTINGS:
            return spend(FrameBudget::settings);
        case NGHTTP2_PING:
            return spend(FrameBudget::ping);
        case NGHTTP2_WINDOW_UPDATE:
            return spend(FrameBudget::window);
        default:
            return spend(FrameBudget::other);
    }
}

void Session::onStreamFrame(const nghttp2_frame& frame) {
    const bool isLast = (frame.hd.flags & NGHTTP2_FLAG_END_STREAM) != 0;
    StreamEvents* const stream = streamOf(frame.hd.stream_id);
    if (frame.hd.type == NGHTTP2_DATA && !isLast && frame.hd.length == frame.data.padlen)
        spend(FrameBudget::other);
    if (!stream) return;
    if (frame.hd.type == NGHTTP2_HEADERS && frame.headers.cat == NGHTTP2_HCAT_REQUEST)
        return stream->onHead(isLast);
    if (isLast) stream->onEnd();
}

void Session::onGiven(const nghttp2_frame& frame) {
    const bool isReset = frame.hd.type == NGHTTP2_RST_STREAM;
    // It may bring them about by what it sends as surely as by saying so.
    if (isReset && frame.rst_stream.error_code != NGHTTP2_NO_ERROR) return spend(FrameBudget::reset);
    if (frame.hd.type != NGHTTP2_HEADERS && frame.hd.type != NGHTTP2_DATA) return;
    events_.onSent(frame.hd.length + frameHead);
    budget_.earn(FrameBudget::sent);
    const bool isLast = (frame.hd.flags & NGHTTP2_FLAG_END_STREAM) != 0;
    // What is left of the request isn't wanted.
    if (isLast && nghttp2_session_get_stream_remote_close(session_.get(), frame.hd.stream_id) == 0)
        reset(frame.hd.stream_id, NGHTTP2_NO_ERROR);
}

/// As much as makes a record of TLS full, and never a frame for a handful of bytes that could go with the next ones.
std::size_t Session::sizeOfNext(std::uint64_t unsent, std::size_t most) const {
    const std::size_t used = out_->size() + frameHead;
    const std::size_t space = used + leastFrame <= recordSize ? recordSize - used : recordSize - frameHead;
    return static_cast<std::size_t>(std::min<std::uint64_t>(unsent, std::min(space, most)));
}

int Session::giveBody(const std::uint8_t* head, StreamEvents& stream, std::size_t size) {
    if (!out_->empty() && out_->size() + frameHead + size > recordSize) return NGHTTP2_ERR_WOULDBLOCK;
    const std::size_t before = out_->size();
    out_->append(textOf(head, frameHead));
    if (stream.takeBody(*out_, size)) return 0;
    out_->resize(before);
    return NGHTTP2_ERR_TEMPORAL_CALLBACK_FAILURE;
}

void Session::answer(std::int32_t id, StreamEvents& stream, const std::vector<nghttp2_nv>& fields) {
    nghttp2_data_provider body{};
    body.source.ptr = &stream;
    body.read_callback = Callbacks::readBody;
    check(nghttp2_submit_response(session_.get(), id, fields.data(), fields.size(),
                                  stream.unsent() > 0 ? &body : nullptr));
}

void Session::goOn(std::int32_t id) {
    static std::array<std::uint8_t, 7> name{':', 's', 't', 'a', 't', 'u', 's'};
    static std::array<std::uint8_t, 3> value{'1', '0', '0'};
    const nghttp2_nv status{name.data(), value.data(), name.size(), value.size(), NGHTTP2_NV_FLAG_NONE};
    check(nghttp2_submit_headers(session_.get(), NGHTTP2_FLAG_NONE, id, nullptr, &status, 1, nullptr));
}

void Session::reset(std::int32_t id, std::uint32_t code) {
    check(nghttp2_submit_rst_stream(session_.get(), NGHTTP2_FLAG_NONE, id, code));
}

void Session::consume(std::int32_t id, std::size_t bytes) {
    check(nghttp2_session_consume(session_.get(), id, bytes));
}

void Session::consumeOfConnection(std::size_t bytes) {
    check(nghttp2_session_consume_connection(session_.get(), bytes));
}

bool Session::isHeldUp(std::int32_t id) const {
    return nghttp2_session_get_stream_remote_window_size(session_.get(), id) == 0;
}

void Session::spend(std::int64_t cost) {
    if (!budget_.spend(cost, std::chrono::steady_clock::now()))
        sendAway("it sends frames without end that bring no request forward");
}

void Session::sendAway(std::string_view complaint) {
    if (isEnded_) return;
    complaint_ = complaint;
    end(NGHTTP2_ENHANCE_YOUR_CALM);
}

void Session::refuseFurther() {
    const std::int32_t last = nghttp2_session_get_last_proc_stream_id(session_.get());
    check(nghttp2_submit_goaway(session_.get(), NGHTTP2_FLAG_NONE, last, NGHTTP2_NO_ERROR, nullptr, 0));
}

void Session::end(std::uint32_t code) {
    if (isEnded_) return;
    isEnded_ = true;
    check(nghttp2_session_terminate_session(session_.get(), code));
}

bool Session::isOver() const {
    return nghttp2_session_want_read(session_.get()) == 0 && nghttp2_session_want_write(session_.get()) == 0;
}

}  // namespace torvex::http2
