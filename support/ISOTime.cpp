#include "support/ISOTime.h"

#include <cstdio>

using namespace std::chrono;

namespace {

constexpr int kMaxOffsetHours = 14;
constexpr int kMillisecondDigits = 3;

// Reads a time from left to right; isGood turns false at the first character that does not belong there.
class Reader {
  public:
    explicit Reader(std::string_view text) : mRest(text) {}

    bool isGood() const { return mIsGood; }
    bool isAtEnd() const { return mRest.empty(); }

    bool skip(char character) {
        if (!mRest.starts_with(character)) return false;
        mRest.remove_prefix(1);
        return true;
    }
    void expect(char character) { mIsGood = skip(character) && mIsGood; }

    int number(std::size_t digits, int most) {
        int value = 0;
        for (std::size_t i = 0; i < digits; ++i) value = 10 * value + digit();
        mIsGood = mIsGood && value <= most;
        return value;
    }

    milliseconds fraction() {
        int value = 0;
        for (int i = 0; i < kMillisecondDigits; ++i) value = 10 * value + (isDigitNext() ? digit() : 0);
        while (isDigitNext()) digit();
        return milliseconds(value);
    }

  private:
    bool isDigitNext() const { return !mRest.empty() && mRest.front() >= '0' && mRest.front() <= '9'; }
    int digit() {
        if (!isDigitNext()) return mIsGood = false;
        const int value = mRest.front() - '0';
        mRest.remove_prefix(1);
        return value;
    }

    std::string_view mRest;
    bool mIsGood = true;
};

std::optional<sys_days> readDate(Reader& reader) {
    const int years = reader.number(4, 9999);
    reader.expect('-');
    const int months = reader.number(2, 12);
    reader.expect('-');
    const int days = reader.number(2, 31);
    const year_month_day date = year(years) / months / days;
    return date.ok() ? std::optional<sys_days>(date) : std::nullopt;
}

milliseconds readTimeOfDay(Reader& reader) {
    const hours hour(reader.number(2, 23));
    reader.expect(':');
    const minutes minute(reader.number(2, 59));
    reader.expect(':');
    const seconds second(reader.number(2, 60));  // a leap second is the start of the next minute
    return hour + minute + second + (reader.skip('.') ? reader.fraction() : milliseconds(0));
}

// "Z", "+12:00", "-0330", "+13" or nothing.
minutes readOffset(Reader& reader) {
    if (reader.isAtEnd() || reader.skip('Z')) return minutes(0);
    const bool isWest = reader.skip('-');
    if (!isWest) reader.expect('+');
    minutes offset = hours(reader.number(2, kMaxOffsetHours));
    const bool hasColon = reader.skip(':');
    if (hasColon || !reader.isAtEnd()) offset += minutes(reader.number(2, 59));
    return isWest ? -offset : offset;
}

}  // namespace

std::optional<ISOTime> readISOTime(std::string_view text) {
    Reader reader(text);
    const std::optional<sys_days> date = readDate(reader);
    reader.expect('T');
    const milliseconds timeOfDay = readTimeOfDay(reader);
    const minutes offset = readOffset(reader);
    const bool isWhole = date && reader.isGood() && reader.isAtEnd();
    return isWhole ? std::optional<ISOTime>(*date + timeOfDay - offset) : std::nullopt;
}

std::string isoTime(sys_seconds time) {
    const sys_days day = floor<days>(time);
    const year_month_day date = day;
    const hh_mm_ss clock(time - day);
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d", int(date.year()),
                  unsigned(date.month()), unsigned(date.day()), int(clock.hours().count()),
                  int(clock.minutes().count()), int(clock.seconds().count()));
    return text;
}
