#include "text/InternetDateTime.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace velmora::internal {

namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;
using std::chrono::sys_days;
using std::chrono::sys_seconds;

/// The rest of a text to read, and whether everything so far was as expected.
class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}

  /// A number of exactly `digitCount` digits, at most `limit`.
  int number(std::size_t digitCount, int limit) {
    int value = 0;
    for (std::size_t count = 0; count < digitCount; ++count) {
      const char digit = next();
      suits_ = suits_ && digit >= '0' && digit <= '9';
      value = suits_ ? value * 10 + (digit - '0') : 0;
    }
    suits_ = suits_ && value <= limit;
    return value;
  }

  void expect(char expected) { suits_ = next() == expected && suits_; }

  char next() {
    if (rest_.empty()) {
      suits_ = false;
      return '\0';
    }
    const char first = rest_.front();
    rest_.remove_prefix(1);
    return first;
  }

  void refuse() { suits_ = false; }

  [[nodiscard]] bool hasReadAll() const { return suits_ && rest_.empty(); }

 private:
  std::string_view rest_;
  bool suits_ = true;
};

sys_days readDay(Reader& reader) {
  const std::chrono::year year(reader.number(4, 9999));
  reader.expect('-');
  const std::chrono::month month(static_cast<unsigned>(reader.number(2, 12)));
  reader.expect('-');
  const std::chrono::day day(static_cast<unsigned>(reader.number(2, 31)));
  const std::chrono::year_month_day date = year / month / day;
  if (!date.ok()) {
    reader.refuse();
    return {};
  }
  return date;
}

minutes readHoursAndMinutes(Reader& reader) {
  const hours hour(reader.number(2, 23));
  reader.expect(':');
  return hour + minutes(reader.number(2, 59));
}

seconds readTime(Reader& reader) {
  const minutes time = readHoursAndMinutes(reader);
  reader.expect(':');
  return time + seconds(reader.number(2, 59));
}

minutes readOffset(Reader& reader) {
  switch (reader.next()) {
    case 'Z':
      return minutes(0);
    case '+':
      return readHoursAndMinutes(reader);
    case '-':
      return -readHoursAndMinutes(reader);
    default:
      reader.refuse();
      return {};
  }
}

/// Appends `value` with zeros before it, so that it has `digitCount` digits at least.
void append(std::string& text, std::int64_t value, std::size_t digitCount) {
  const std::string digits = std::to_string(value);
  text.append(digitCount - std::min(digits.size(), digitCount), '0').append(digits);
}

void appendDay(std::string& text, std::chrono::year_month_day date) {
  append(text, static_cast<int>(date.year()), 4);
  text += '-';
  append(text, static_cast<unsigned>(date.month()), 2);
  text += '-';
  append(text, static_cast<unsigned>(date.day()), 2);
}

void appendHoursAndMinutes(std::string& text, minutes time) {
  append(text, time / hours(1), 2);
  text += ':';
  append(text, time % hours(1) / minutes(1), 2);
}

void appendTime(std::string& text, seconds time) {
  appendHoursAndMinutes(text, std::chrono::floor<minutes>(time));
  text += ':';
  append(text, time % minutes(1) / seconds(1), 2);
}

void appendOffset(std::string& text, minutes offset) {
  if (offset == minutes(0)) {
    text += 'Z';
    return;
  }
  text += offset < minutes(0) ? '-' : '+';
  appendHoursAndMinutes(text, std::chrono::abs(offset));
}

}  // namespace

std::optional<sys_seconds> parseInternetDateTime(std::string_view text) {
  Reader reader(text);
  const sys_days day = readDay(reader);
  reader.expect('T');
  const seconds time = readTime(reader);
  const minutes offset = readOffset(reader);
  return reader.hasReadAll() ? std::optional(day + time - offset) : std::nullopt;
}

std::string formatInternetDateTime(sys_seconds instant, minutes offset) {
  const sys_seconds local = instant + offset;
  const sys_days day = std::chrono::floor<days>(local);
  std::string text;
  appendDay(text, day);
  text += 'T';
  appendTime(text, local - day);
  appendOffset(text, offset);
  return text;
}

}  // namespace velmora::internal
