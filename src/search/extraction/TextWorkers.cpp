#include "search/extraction/TextWorkers.h"

#include <new>
#include <poppler/cpp/poppler-global.h>

#include "platform/workers/Packing.h"
#include "platform/workers/WorkerSide.h"

namespace torvex::catalogue {

namespace {

constexpr std::size_t longestRequest = 68u << 20;
constexpr std::size_t longestAnswer = 4u << 20;
constexpr WorkerLimits limits{.cpuSeconds = 30, .cpuSecondsOfLife = 900, .memory = std::size_t{512} << 20};

constexpr const char* tooMuch = "it takes too much time or memory, or its reader has a fault with it";

std::string pack(const Reading& reading) {
    Packing packing;
    packing.number(1).text(reading.text).text(reading.language);
    packColumns(packing, reading.columns);
    return packing.take();
}

std::string packFailure(std::string_view reason) {
    return Packing().number(0).text(reason).take();
}

Reading unpack(std::string_view answer) {
    Unpacking unpacking(answer);
    if (unpacking.number() == 0) throw ExtractionError(std::string(unpacking.text()));
    Reading reading;
    reading.text = unpacking.text();
    reading.language = unpacking.text();
    reading.columns = unpackColumns(unpacking);
    return reading;
}

std::string answered(std::string_view request) {
    try {
        Unpacking unpacking(request);
        const std::string name(unpacking.text());
        return pack(DirectExtractor().read(name, unpacking.rest()));
    } catch (const std::bad_alloc&) {
        return packFailure("it takes too much memory");
    } catch (const std::exception& error) {
        return packFailure(error.what());
    }
}

/// Whatever the libraries read from files at their first use, they read now.
void warmUp() {
    const std::string_view pdf =
        "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n2 0 obj<</Type/Pages/Kids[3 0 R]/Count "
        "1>>endobj\n"
        "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Contents 4 0 R/Resources<</Font<</F<</Type/Font/"
        "Subtype/Type1/BaseFont/Helvetica>>>>>>>>endobj\n4 0 obj<</Length 24>>stream\nBT /F 9 Tf (a) Tj ET\n"
        "endstream\nendobj\ntrailer<</Root 1 0 R>>\n";
    for (const auto& [name, bytes] : {std::pair<std::string_view, std::string_view>{"a.pdf", pdf},
                                      {"a.html", "<p>&eacute;\xE9</p>"},
                                      {"a.rtf", "{\\rtf1\\ansi\\'e9}"}}) {
        answered(Packing().text(name).take().append(bytes));
    }
}

}  // namespace

int runTextWorker() {
    poppler::set_debug_error_function([](const std::string&, void*) {}, nullptr);
    warmUp();
    return workerSide::serve(limits, longestRequest, answered);
}

Reading TextWorkers::read(const std::string& fileName, std::string_view bytes) {
    const std::scoped_lock oneAtATime(reading_);
    const std::string head = Packing().text(fileName).take();
    if (head.size() + bytes.size() > longestRequest) throw ExtractionError("it is too large");
    try {
        return unpack(ask(head, bytes));
    } catch (const WorkerError& error) {
        drop();
        if (isEnding()) throw ReadingEnded();
        throw ExtractionError(error.what());
    } catch (const WorkerLate&) {
        drop();
        throw ExtractionError("it takes too much time");
    }
}

std::string TextWorkers::ask(const std::string& head, std::string_view bytes) {
    for (;;) {
        const std::shared_ptr<WorkerProcess> asked = worker();
        const bool isFresh = asked->served() == 0;
        try {
            return asked->ask(head, bytes, longestAnswer, Deadline::in(patience_));
        } catch (const WorkerGone&) {
            drop();
            if (isEnding()) throw ReadingEnded();
            // One that has served others may have come to its own end just now.
            if (isFresh) throw ExtractionError(tooMuch);
        }
    }
}

std::shared_ptr<WorkerProcess> TextWorkers::worker() {
    const std::scoped_lock lock(mutex_);
    if (isCancelled_) throw ReadingEnded();
    if (!worker_) worker_ = std::make_shared<WorkerProcess>(program_, textWorkerArgument);
    return worker_;
}

bool TextWorkers::isEnding() {
    const std::scoped_lock lock(mutex_);
    return isCancelled_;
}

void TextWorkers::drop() {
    const std::scoped_lock lock(mutex_);
    worker_.reset();
}

void TextWorkers::cancel() {
    const std::scoped_lock lock(mutex_);
    isCancelled_ = true;
    if (worker_) worker_->kill();
}

}  // namespace torvex::catalogue
