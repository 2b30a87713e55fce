#include "stdlib/date/date_parser.h"

#include <cstdint>

#include "foundation/character.h"
#include "foundation/number_text.h"
#include "stdlib/date/calendar.h"
#include "stdlib/date/date_names.h"

namespace quorvelin {

namespace {

constexpr int32_t kAbsent = -1;

// Up to three numbers, in the order of the text; a number that was used is marked as absent.
struct NumberList {
    bool isFull() const { return count == 3; }
    void append(int32_t value) { values[count++] = value; }

    // The first number left that is above (below) `bound`; `kAbsent` without one. It is used up.
    int32_t takeFirstAbove(int32_t bound) {
        for (int32_t i = 0; i < count; ++i) {
            if (values[i] != kAbsent && values[i] > bound) return use(i);
        }
        return kAbsent;
    }
    int32_t takeFirstBelow(int32_t bound) {
        for (int32_t i = 0; i < count; ++i) {
            if (values[i] != kAbsent && values[i] < bound) return use(i);
        }
        return kAbsent;
    }
    int32_t takeFirst() { return takeFirstAbove(kAbsent); }
    int32_t dropLast() { return values[--count]; }

    int32_t values[3] = {};
    int32_t count = 0;

  private:
    int32_t use(int32_t index) {
        const int32_t value = values[index];
        values[index] = kAbsent;
        return value;
    }
};

// Which list the last number went to.
enum class LastKind { none, date, time };

class DateTextReader {
  public:
    explicit DateTextReader(const BString& text) : text_(text) {}

    void read() {
        while (hasMore()) {
            step();
            if (current_ == u':') {
                readColon();
            } else if (isAlphabetic(current_)) {
                readWord();
            } else if (isDecimalDigit(current_)) {
                readNumber();
            }
        }
    }

    NumberList dates;
    NumberList times;
    int32_t month = kAbsent;
    int32_t zone = kAbsent;

  private:
    bool hasMore() const { return next_ < text_.length(); }
    // Takes the next character; behind the end, a NUL.
    void step() { current_ = hasMore() ? text_[next_++] : u'\0'; }
    void skipSpace() {
        while (isSpace(current_) && hasMore()) step();
    }

    void readColon() {
        if (lastKind_ == LastKind::date && !times.isFull()) times.append(dates.dropLast());
        lastKind_ = LastKind::time;
    }

    // Quirk: the character that ends a number or a word is taken with it. So "10:30" is two numbers of the
    // date.
    void readNumber() {
        // A number of more digits than this is cut to the largest whatever follows, but its leading zeros do
        // not count.
        char16_t digits[32];
        int32_t count = 0;
        for (; isDecimalDigit(current_); step()) {
            const bool isFurtherZero = count == 1 && digits[0] == u'0' && current_ == u'0';
            if (!isFurtherZero && count < 31) digits[count++] = current_;
        }
        digits[count] = 0;
        // Quirk: a leading zero makes the number octal; "08" is 0.
        const int32_t value = parseInteger32(digits, 0);
        if (!dates.isFull()) {
            dates.append(value);
            lastKind_ = LastKind::date;
        } else if (!times.isFull()) {
            times.append(value);
            lastKind_ = LastKind::time;
        }
    }

    void readWord() {
        // Quirk: only words of three letters mean something, so "Nov" is a month and "November" is none.
        char16_t word[3] = {};
        int32_t length = 0;
        for (; isAlphabetic(current_); step()) {
            if (length < 3) word[length] = toLowerCase(current_);
            if (length < 4) ++length;
        }
        lastKind_ = LastKind::none;
        if (length != 3) return;
        if (isWord(word, u"gmt") || isWord(word, u"utc")) {
            readZone();
            return;
        }
        for (int32_t i = 0; i < 12; ++i) {
            if (isWord(word, monthName(i).data())) month = i + 1;
        }
    }

    // Does `word` agree with the first three letters of `name`?
    static bool isWord(const char16_t (&word)[3], const char16_t* name) {
        for (int32_t i = 0; i < 3; ++i) {
            if (word[i] != toLowerCase(name[i])) return false;
        }
        return true;
    }

    void readZone() {
        skipSpace();
        const bool isNegative = current_ == u'-';
        if (isNegative || current_ == u'+') {
            step();
            skipSpace();
        }
        uint32_t value = 0;
        for (; isDecimalDigit(current_); step()) value = value * 10 + (current_ - u'0');
        zone = static_cast<int32_t>(isNegative ? 0 - value : value);
    }

    const BString& text_;
    int32_t next_ = 0;
    char16_t current_ = 0;
    LastKind lastKind_ = LastKind::none;
};

// Quirk: the reading of the local clock, taken as if it were one in UTC.
double presentValue() {
    return static_cast<double>(secondsFromFields(localFields(presentSeconds()))) * 1000.0;
}

int32_t orElse(int32_t value, int32_t other) {
    return value == kAbsent ? other : value;
}

// Quirk: no pivot. Any year below 1900 counts from 1900, 4 being 1904.
int32_t fullYear(int32_t year) {
    return year == kAbsent || year >= 1900 ? year : year + 1900;
}

}  // namespace

double parseDateText(const BString& text) {
    if (text.isEmpty()) return presentValue();

    DateTextReader reader(text);
    reader.read();
    NumberList& dates = reader.dates;
    int32_t year = fullYear(dates.takeFirstAbove(31));
    int32_t day = dates.takeFirstAbove(12);
    int32_t month = reader.month;
    if (month == kAbsent) month = dates.takeFirst();
    if (day == kAbsent) day = dates.takeFirst();
    if (year == kAbsent) year = fullYear(dates.takeFirst());
    if (month == kAbsent && day == kAbsent && year == kAbsent) return presentValue();

    const int32_t hour = orElse(reader.times.takeFirstBelow(24), 0);
    const int32_t minute = orElse(reader.times.takeFirst(), 0);
    const int32_t second = orElse(reader.times.takeFirst(), 0);
    const double utc =
        utcValue(orElse(year, 1970), orElse(month, 1) - 1, orElse(day, 1), hour, minute, second);
    int64_t seconds = truncateToInt64(utc) / 1000;
    // Quirk: "GMT-1" is read as if no zone had been given.
    if (reader.zone != kAbsent) seconds -= (reader.zone % 100 + reader.zone / 100 * 60) * int64_t{60};
    return static_cast<double>(seconds) * 1000.0;
}

}  // namespace quorvelin
