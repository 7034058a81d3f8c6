#include <charconv>

#include "platform/db/Binding.h"
#include "platform/db/PostgresStatement.h"
#include "platform/text/Text.h"

namespace torvex::db {

namespace {

enum class Kind { Boolean, Whole, Fraction, Moment, Text };

/// By the numbers that the server's catalogue fixes for its own types.
Kind kindOf(Oid type) {
    switch (type) {
        case 16:  // boolean
            return Kind::Boolean;
        case 20:  // int8, int2, int4
        case 21:
        case 23:
            return Kind::Whole;
        case 700:  // float4, float8, numeric
        case 701:
        case 1700:
            return Kind::Fraction;
        case 1114:  // timestamp, timestamptz
        case 1184:
            return Kind::Moment;
        default:
            return Kind::Text;
    }
}

/// "YYYY-MM-DD HH:MM:SS"; what the server adds are fractions of a second and a zone.
constexpr std::size_t momentLength = 19;

double parse(std::string_view text) {
    double number = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
    if (end.ec == std::errc::result_out_of_range)
        throw DatabaseError("a number of the result is out of range");
    return number;
}

class PostgresRows final : public Rows::Source {
  public:
    explicit PostgresRows(PostgresResult result)
        : result_(std::move(result)),
          rows_(PQntuples(result_.get())),
          columns_(static_cast<std::size_t>(PQnfields(result_.get()))) {}

    bool next() override {
        if (row_ < rows_) ++row_;
        return row_ < rows_;
    }
    std::size_t columns() const override { return columns_; }
    std::string_view columnName(std::size_t index) const override {
        return PQfname(result_.get(), static_cast<int>(index));
    }
    bool isNull(std::size_t index) const override {
        // Before the first row and behind the last one all is null, as on the other engine.
        return row_ < 0 || row_ >= rows_ || PQgetisnull(result_.get(), row_, static_cast<int>(index)) != 0;
    }
    std::string text(std::size_t index) const override;
    std::string_view view(std::size_t index) const override;
    double number(std::size_t index, double ifNull) const override;
    Value value(std::size_t index) const override;

  private:
    Kind kind(std::size_t index) const { return kindOf(PQftype(result_.get(), static_cast<int>(index))); }
    /// "" for a null.
    std::string_view stored(std::size_t index) const {
        if (row_ < 0 || row_ >= rows_) return {};
        const int column = static_cast<int>(index);
        return {PQgetvalue(result_.get(), row_, column),
                static_cast<std::size_t>(PQgetlength(result_.get(), row_, column))};
    }

    PostgresResult result_;
    int row_ = -1;
    int rows_;
    std::size_t columns_;
};

std::string PostgresRows::text(std::size_t index) const {
    if (isNull(index)) return {};
    switch (kind(index)) {
        case Kind::Boolean:
            return stored(index) == "t" ? "1" : "0";
        case Kind::Fraction:
            return text::fromNumber(parse(stored(index)));
        default:
            return std::string(view(index));
    }
}

std::string_view PostgresRows::view(std::size_t index) const {
    const std::string_view text = stored(index);
    return kind(index) == Kind::Moment ? text.substr(0, momentLength) : text;
}

double PostgresRows::number(std::size_t index, double ifNull) const {
    if (isNull(index)) return ifNull;
    switch (kind(index)) {
        case Kind::Boolean:
            return stored(index) == "t" ? 1 : 0;
        case Kind::Whole:
        case Kind::Fraction:
            return parse(stored(index));
        default:
            return numberOf(view(index));
    }
}

Value PostgresRows::value(std::size_t index) const {
    if (isNull(index)) return {};
    switch (kind(index)) {
        case Kind::Moment:
            return momentOrText(view(index));
        case Kind::Text:
            return view(index);
        default:
            return number(index, 0);
    }
}

}  // namespace

std::unique_ptr<Rows::Source> openPostgresRows(PostgresResult result) {
    return std::make_unique<PostgresRows>(std::move(result));
}

}  // namespace torvex::db
