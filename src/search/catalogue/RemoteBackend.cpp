#include "search/catalogue/RemoteBackend.h"

#include "search/catalogue/Socket.h"
#include "search/catalogue/Wire.h"

namespace torvex::catalogue {

RemoteBackend::RemoteBackend(std::string_view address, std::chrono::milliseconds patience)
    : port_(std::to_string(wire::defaultPort)), patience_(patience) {
    std::string_view server = address.substr(0, address.find('/'));
    const std::size_t colon = server.rfind(':');
    const std::size_t bracket = server.rfind(']');
    if (colon != std::string_view::npos && (bracket == std::string_view::npos || bracket < colon)) {
        port_ = server.substr(colon + 1);
        server = server.substr(0, colon);
    }
    if (server.starts_with('[') && server.ends_with(']')) server = server.substr(1, server.size() - 2);
    host_ = server;
    if (host_.empty() || port_.empty()) throw UnavailableError("the catalogue's server isn't named");
}

std::string RemoteBackend::ask(const std::string& request) const {
    const Deadline until = Deadline::in(patience_);
    const Descriptor socket = connectTo(host_, port_, until);
    sendMessage(socket, request, until);
    return receiveMessage(socket, wire::longestAnswer, until);
}

void RemoteBackend::check() const {
    wire::readChecked(ask(wire::checkRequest()));
}

Found RemoteBackend::find(const Query& query, std::size_t most) const {
    return wire::readFound(ask(wire::findRequest(query, most)));
}

std::vector<Row> RemoteBackend::rows(const Query& query, const std::string& database,
                                     const std::vector<Hit>& hits) const {
    return wire::readRows(ask(wire::rowsRequest(query, database, hits)));
}

std::string RemoteBackend::corrected(std::string_view words, std::string_view language) const {
    return wire::readCorrected(ask(wire::correctedRequest(words, language)));
}

}  // namespace torvex::catalogue
