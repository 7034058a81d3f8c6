#include "host/http/AnswerParts.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

#include "host/http/Ascii.h"

namespace torvex::answerParts {

namespace {

/// `name` ends with its colon.
bool hasField(std::string_view fields, std::string_view name) {
    while (!fields.empty())
        if (ascii::startsWith(takeLine(fields), name)) return true;
    return false;
}

/// Of fields with a line each, those that the answer hasn't got.
void appendMissing(std::string& out, std::string_view own, std::string_view fields) {
    while (!fields.empty()) {
        const std::string_view line = takeLine(fields);
        if (!hasField(own, line.substr(0, line.find(':') + 1))) out.append(line);
    }
}

bool readAll(const FileAnswer& file, std::uint64_t offset, char* space, std::size_t count) {
    std::size_t done = 0;
    while (done < count) {
        const auto at = static_cast<off_t>(file.offset + offset + done);
        const ssize_t got = ::pread(file.file->number(), space + done, count - done, at);
        if (got == 0 || (got < 0 && errno != EINTR)) return false;
        if (got > 0) done += static_cast<std::size_t>(got);
    }
    return true;
}

}  // namespace

std::string_view takeLine(std::string_view& fields) {
    const std::string_view line = fields.substr(0, std::min(fields.find('\n'), fields.size() - 1) + 1);
    fields.remove_prefix(line.size());
    return line;
}

void appendFields(std::string& out, const Answer& answer, std::string_view common) {
    out.append(answer.fields);
    if (answer.replacesFields) {
        appendMissing(out, answer.fields, common);
    } else {
        out.append(common);
    }
}

std::string_view bodyText(const Answer& answer) {
    if (const auto* own = std::get_if<std::string>(&answer.body)) return *own;
    if (const auto* shared = std::get_if<std::shared_ptr<const std::string>>(&answer.body)) return **shared;
    return {};
}

std::uint64_t bodyLength(const Answer& answer) {
    const auto* file = std::get_if<FileAnswer>(&answer.body);
    return file ? file->length : bodyText(answer).size();
}

bool appendBody(std::string& out, const Answer& answer, std::uint64_t offset, std::size_t count) {
    const auto* file = std::get_if<FileAnswer>(&answer.body);
    if (!file) {
        out.append(bodyText(answer).substr(static_cast<std::size_t>(offset), count));
        return true;
    }
    const std::size_t before = out.size();
    out.resize(before + count);
    const bool isRead = readAll(*file, offset, out.data() + before, count);
    if (!isRead) out.resize(before);
    return isRead;
}

}  // namespace torvex::answerParts
