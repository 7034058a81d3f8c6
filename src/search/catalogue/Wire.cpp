#include "search/catalogue/Wire.h"

#include "platform/workers/Packing.h"
#include "search/extraction/Reading.h"

namespace torvex::catalogue::wire {

namespace {

enum class Request : std::uint64_t { Check, Find, Rows, Corrected };
enum class Status : std::uint64_t { Done, Wrong, TooMany, Unavailable };

Packing request(Request what) {
    Packing packing;
    packing.number(version).number(static_cast<std::uint64_t>(what));
    return packing;
}

std::string failure(Status status, std::string_view reason) {
    Packing packing;
    packing.number(static_cast<std::uint64_t>(status)).text(reason);
    return packing.take();
}

void pack(Packing& packing, const Query& query) {
    packing.text(query.text).text(query.language).text(query.sortBy).number(query.scopes.size());
    for (const Scope& scope : query.scopes)
        packing.text(scope.path).number(scope.depth == Depth::Deep ? 1 : 0);
}

Query readQuery(Unpacking& unpacking) {
    Query query;
    query.text = unpacking.text();
    query.language = unpacking.text();
    query.sortBy = unpacking.text();
    for (std::uint64_t left = unpacking.number(); left > 0; --left) {
        const std::string_view path = unpacking.text();
        query.scopes.push_back({std::string(path), unpacking.number() == 1 ? Depth::Deep : Depth::Shallow});
    }
    return query;
}

void pack(Packing& packing, const std::vector<Hit>& hits) {
    packing.number(hits.size());
    for (const Hit& hit : hits) packing.number(hit.id).number(static_cast<std::uint64_t>(hit.rank));
}

std::vector<Hit> readHits(Unpacking& unpacking) {
    std::vector<Hit> hits;
    for (std::uint64_t left = unpacking.number(); left > 0; --left) {
        const auto id = static_cast<std::uint32_t>(unpacking.number());
        hits.push_back({id, static_cast<int>(unpacking.number())});
    }
    return hits;
}

void pack(Packing& packing, const Row& row) {
    packing.text(row.path).text(row.filename).number(row.size).text(row.write);
    packing.number(static_cast<std::uint64_t>(row.rank)).text(row.characterization);
    packColumns(packing, row.columns);
}

Row readRow(Unpacking& unpacking) {
    Row row;
    row.path = unpacking.text();
    row.filename = unpacking.text();
    row.size = unpacking.number();
    row.write = unpacking.text();
    row.rank = static_cast<int>(unpacking.number());
    row.characterization = unpacking.text();
    row.columns = unpackColumns(unpacking);
    return row;
}

void answerFind(const Backend& backend, Unpacking& asked, Packing& to) {
    const Query query = readQuery(asked);
    const Found found = backend.find(query, static_cast<std::size_t>(asked.number()));
    to.text(found.database).number(found.last).number(found.isAll ? 1 : 0);
    pack(to, found.hits);
}

void answerRows(const Backend& backend, Unpacking& asked, Packing& to) {
    const Query query = readQuery(asked);
    const std::string database(asked.text());
    const std::vector<Row> rows = backend.rows(query, database, readHits(asked));
    to.number(rows.size());
    for (const Row& row : rows) pack(to, row);
}

void answerCorrected(const Backend& backend, Unpacking& asked, Packing& to) {
    const std::string_view words = asked.text();
    to.text(backend.corrected(words, asked.text()));
}

std::string done(const Backend& backend, std::string_view message) {
    Unpacking asked(message);
    if (asked.number() != version) return failure(Status::Unavailable, "the servers' versions differ");
    Packing to;
    to.number(static_cast<std::uint64_t>(Status::Done));
    switch (static_cast<Request>(asked.number())) {
        case Request::Check:
            backend.check();
            break;
        case Request::Find:
            answerFind(backend, asked, to);
            break;
        case Request::Rows:
            answerRows(backend, asked, to);
            break;
        case Request::Corrected:
            answerCorrected(backend, asked, to);
            break;
        default:
            return failure(Status::Unavailable, "a request of another version");
    }
    return to.take();
}

/// What stands behind the status.
template <typename Read>
auto readAnswer(std::string_view answer, Read read) {
    try {
        Unpacking unpacking(answer);
        const auto status = static_cast<Status>(unpacking.number());
        if (status == Status::Done) return read(unpacking);
        const std::string reason(unpacking.text());
        if (status == Status::Wrong) throw QueryError(reason);
        if (status == Status::TooMany) throw TooManyError(reason);
        throw UnavailableError(reason);
    } catch (const QueryError&) {
        throw;
    } catch (const UnavailableError&) {
        throw;
    } catch (const Error& error) {
        throw UnavailableError(std::string("the other server's answer can't be read: ") + error.what());
    }
}

}  // namespace

std::string checkRequest() {
    return request(Request::Check).take();
}

std::string findRequest(const Query& query, std::size_t most) {
    Packing packing = request(Request::Find);
    pack(packing, query);
    return packing.number(most).take();
}

std::string rowsRequest(const Query& query, const std::string& database, const std::vector<Hit>& hits) {
    Packing packing = request(Request::Rows);
    pack(packing, query);
    packing.text(database);
    pack(packing, hits);
    return packing.take();
}

std::string correctedRequest(std::string_view words, std::string_view language) {
    return request(Request::Corrected).text(words).text(language).take();
}

std::string answer(const Backend& backend, std::string_view message) {
    try {
        return done(backend, message);
    } catch (const TooManyError& error) {
        return failure(Status::TooMany, error.what());
    } catch (const QueryError& error) {
        return failure(Status::Wrong, error.what());
    } catch (const std::exception& error) {
        return failure(Status::Unavailable, error.what());
    }
}

void readChecked(std::string_view answer) {
    readAnswer(answer, [](Unpacking&) { return 0; });
}

Found readFound(std::string_view answer) {
    return readAnswer(answer, [](Unpacking& unpacking) {
        Found found;
        found.database = unpacking.text();
        found.last = static_cast<std::uint32_t>(unpacking.number());
        found.isAll = unpacking.number() == 1;
        found.hits = readHits(unpacking);
        return found;
    });
}

std::vector<Row> readRows(std::string_view answer) {
    return readAnswer(answer, [](Unpacking& unpacking) {
        std::vector<Row> rows;
        for (std::uint64_t left = unpacking.number(); left > 0; --left) rows.push_back(readRow(unpacking));
        return rows;
    });
}

std::string readCorrected(std::string_view answer) {
    return readAnswer(answer, [](Unpacking& unpacking) { return std::string(unpacking.text()); });
}

std::string withLength(std::string_view message) {
    std::string bytes;
    for (std::size_t n = 0; n < lengthSize; ++n) bytes += static_cast<char>(message.size() >> (8 * n));
    return bytes.append(message);
}

std::size_t readLength(std::string_view bytes) {
    std::size_t length = 0;
    for (std::size_t n = 0; n < lengthSize; ++n)
        length |= static_cast<std::size_t>(static_cast<unsigned char>(bytes[n])) << (8 * n);
    return length;
}

}  // namespace torvex::catalogue::wire
