#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

namespace torvex {

/// A moment of civil time on this server, to the second. Plain data; no time zone is attached.
struct DateTime {
    int year = 1900;
    int month = 1;  ///< 1 to 12
    int day = 1;    ///< 1 to 31
    int hour = 0;
    int minute = 0;
    int second = 0;

    auto operator<=>(const DateTime&) const = default;
};

/// "yyyymmdd": the form in which days are stored and compared as text.
std::string date8(const DateTime& moment);

/// "yyyy-mm-ddThh:mm:ss".
std::string isoText(const DateTime& moment);

/// Reads "yyyy-mm-dd", "yyyy-mm-ddThh:mm:ss" or the same with a blank in place of the T; a fraction of a
/// second is dropped. Returns false, and leaves `moment` alone, for anything else and for days that
/// don't exist.
bool parseIso(const std::string& text, DateTime& moment);

/// Whether a text is a day that exists, as `date8` writes it.
bool isDate8(std::string_view text);

/// The source of the current time of one request. Implementations are safe to share between threads.
class Clock {
  public:
    virtual ~Clock() = default;
    virtual DateTime now() const = 0;
    /// Seconds since 1970. A civil time can't tell them in the hour that comes twice when summer time ends.
    virtual std::int64_t unixSeconds() const;

    virtual std::string today() const { return date8(now()); }
};

/// The machine's clock in its local time zone.
class SystemClock final : public Clock {
  public:
    DateTime now() const override;
    std::int64_t unixSeconds() const override;
};

/// A clock that stands still: for scripts that replay a day, and for tests.
class FixedClock final : public Clock {
  public:
    explicit FixedClock(const DateTime& moment) : moment_(moment) {}
    DateTime now() const override { return moment_; }

  private:
    DateTime moment_;
};

}  // namespace torvex
