#include "host/http/MethodNames.h"

// The library names streams without saying where they are.
#include <boost/beast/http/verb.hpp>
#include <ostream>

namespace torvex {

namespace http = boost::beast::http;

Method methodOf(std::string_view name) {
    switch (http::string_to_verb({name.data(), name.size()})) {
        case http::verb::get:
            return Method::Get;
        case http::verb::head:
            return Method::Head;
        case http::verb::post:
            return Method::Post;
        case http::verb::patch:
            return Method::Patch;
        case http::verb::put:
            return Method::Put;
        case http::verb::delete_:
            return Method::Delete;
        case http::verb::options:
            return Method::Options;
        case http::verb::unknown:
            return Method::Unknown;
        default:
            return Method::Other;
    }
}

}  // namespace torvex
