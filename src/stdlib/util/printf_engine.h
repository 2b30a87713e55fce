// JSPrintfEngine, the formatter behind `util.printf`. It knows formats and nothing of script objects: the
// arguments come from virtual operations that the owner provides.
//
// A run goes over the format twice, first to measure and then to write, and reads the arguments both times.
#pragma once

#include <cstdint>

#include "foundation/bstring.h"

namespace quorvelin {

class JSPrintfEngine {
  public:
    virtual ~JSPrintfEngine() = default;

    // Formats by `format`, which ends at its first NUL. The empty text without memory.
    BString run(const char16_t* format);

  protected:
    // Each steps to the next argument and reads it; 0 or the empty text where there is none.
    virtual char16_t nextChar() = 0;
    virtual int16_t nextShort() = 0;
    virtual int32_t nextInt() = 0;
    virtual int32_t nextLong() = 0;
    virtual int64_t nextInt64() = 0;
    virtual double nextDouble() = 0;
    virtual double nextLongDouble() = 0;
    // Steps over an argument; there is nothing to store to.
    virtual void* nextPointer() = 0;
    virtual uint32_t nextPointerValue() = 0;
    // The text lives until `releaseString`.
    virtual const BString& nextString() = 0;
    virtual void releaseString() = 0;
    // Around each of the two passes; `buffer` is null in the first. `begin` goes back to the first argument.
    virtual void begin(const char16_t* format, char16_t* buffer);
    virtual void end();

    int32_t index_ = 1;  // of the next argument

  private:
    enum Flag : uint16_t {
        kLeft = 1,
        kPlus = 2,
        kZero = 4,
        kBlank = 8,
        kAlternative = 16,
        kGrouped = 32,
    };

    void pass(const char16_t* format, char16_t* buffer);
    void runConversion();
    void readFlags();
    int32_t readDigits();
    bool readSize();
    void convert();

    int64_t nextSigned();
    void putSigned();
    void putUnsigned(uint32_t base, bool upperCase);
    void putInteger(uint64_t value, uint32_t base, bool upperCase, char16_t sign);
    void putDouble(double value);
    void putText(const char16_t* units, int64_t length);

    char16_t signOf(bool isNegative) const;
    char16_t step() { return current_ = *cursor_ == 0 ? u'\0' : *cursor_++; }
    void put(char16_t unit) { put(unit, 1); }
    void put(char16_t unit, int64_t times);
    void put(const char16_t* units, int64_t length);
    void padBefore(int64_t length) {
        if ((flags_ & kLeft) == 0) put(pad_, width_ - length);
    }
    void padBehind(int64_t length) {
        if ((flags_ & kLeft) != 0) put(pad_, width_ - length);
    }

    const char16_t group_ = u',';
    char16_t pad_ = u' ';
    char16_t current_ = 0;
    char16_t* out_ = nullptr;
    int64_t count_ = 0;
    int64_t room_ = 0;  // units that `out` can take
    const char16_t* cursor_ = nullptr;
    uint16_t flags_ = 0;
    int32_t width_ = -1;
    int32_t precision_ = -1;
    char16_t size_ = 0;
};

}  // namespace quorvelin
