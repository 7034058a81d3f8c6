#include "operations/calls/BatchAnswer.h"

#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <sodium.h>

#include "operations/calls/ValueJson.h"
#include "platform/text/Text.h"

namespace torvex::operations {

namespace {

namespace json = boost::json;

json::value valueJson(const Value& value);

json::value gridJson(const ResultGrid& grid) {
    json::array rows;
    rows.reserve(grid.rows());
    for (std::size_t row = 0; row < grid.rows(); ++row) {
        json::array cells;
        cells.reserve(grid.columns());
        for (std::size_t column = 0; column < grid.columns(); ++column) {
            cells.push_back(valueJson(grid.at(column, row)));
        }
        rows.push_back(std::move(cells));
    }
    return json::object{{"columns", grid.columns()}, {"rows", std::move(rows)}};
}

json::value valueJson(const Value& value) {
    return value.isGrid() ? gridJson(value.grid()) : singleJson(value);
}

json::value failureJson(const BatchFailure& failure) {
    json::object error{{"number", failure.number}, {"description", textJson(failure.description)}};
    if (failure.step) error["call"] = *failure.step;
    return error;
}

json::value base64(const std::string& bytes) {
    std::string encoded(sodium_base64_ENCODED_LEN(bytes.size(), sodium_base64_VARIANT_ORIGINAL), '\0');
    sodium_bin2base64(encoded.data(), encoded.size(), reinterpret_cast<const unsigned char*>(bytes.data()),
                      bytes.size(), sodium_base64_VARIANT_ORIGINAL);
    encoded.pop_back();  // its closing NUL
    return json::string(encoded);
}

/// By name; one that was added several times is a list.
json::object headersJson(const Response& response) {
    json::object headers;
    for (const auto& [name, value] : response.headers) {
        auto& slot = headers[text::toValidUtf8(name)];
        if (slot.is_null()) {
            slot = textJson(value);
        } else {
            if (!slot.is_array()) slot = json::array{slot};
            slot.get_array().push_back(textJson(value));
        }
    }
    return headers;
}

json::value responseJson(const Response& response) {
    json::object out{{"status", response.status},
                     {"contentType", textJson(response.contentType)},
                     {"charset", textJson(response.charset)},
                     {"headers", headersJson(response)},
                     {"expires", response.expires ? json::value(*response.expires) : json::value(nullptr)},
                     {"cacheControl", textJson(response.cacheControl)}};
    if (response.isBinary()) {
        out["bodyBase64"] = base64(response.body());
    } else {
        out["body"] = textJson(response.body());
    }
    return out;
}

}  // namespace

std::string toJson(const BatchAnswer& answer) {
    json::array results;
    for (const auto& result : answer.results) results.push_back(valueJson(result));
    json::object out{{"results", std::move(results)}};
    if (answer.failure) out["error"] = failureJson(*answer.failure);
    if (answer.response.isTouched()) out["response"] = responseJson(answer.response);
    if (answer.ended) out["ended"] = true;
    if (answer.abandoned) out["abandoned"] = true;
    return json::serialize(out);
}

}  // namespace torvex::operations
