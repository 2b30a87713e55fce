// Any format, mask and date text through the formatters of `util` and the reader of dates.
#include <cstdint>
#include <cstring>

#include "stdlib/date/date_parser.h"
#include "stdlib/util/printf_engine.h"
#include "stdlib/util/text_masks.h"

namespace quorvelin {
namespace {

// Every argument is made of the data; widths and precisions stay small, so that no run writes without end.
class FuzzedEngine final : public JSPrintfEngine {
  public:
    FuzzedEngine(const uint8_t* data, size_t size, const BString& text)
        : data_(data), size_(size), text_(text) {}

  protected:
    char16_t nextChar() override { return static_cast<char16_t>(bits()); }
    int16_t nextShort() override { return static_cast<int16_t>(bits()); }
    int32_t nextInt() override { return static_cast<int32_t>(bits() % 1000) - 500; }
    int32_t nextLong() override { return static_cast<int32_t>(bits()); }
    int64_t nextInt64() override { return static_cast<int64_t>(bits()); }
    double nextDouble() override {
        const uint64_t pattern = bits();
        double value;
        std::memcpy(&value, &pattern, sizeof value);
        return value;
    }
    double nextLongDouble() override { return nextDouble(); }
    void* nextPointer() override {
        ++index_;
        return nullptr;
    }
    uint32_t nextPointerValue() override {
        ++index_;
        return 0;
    }
    const BString& nextString() override {
        ++index_;
        return text_;
    }
    void releaseString() override {}

  private:
    uint64_t bits() {
        uint64_t value = 0;
        for (size_t i = 0; i < 8; ++i)
            value = value << 8 | data_[(static_cast<size_t>(index_) * 7 + i) % size_];
        ++index_;
        return value;
    }

    const uint8_t* data_;
    size_t size_;
    const BString& text_;
};

}  // namespace
}  // namespace quorvelin

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace quorvelin;
    if (size < 8) return 0;
    BString text;
    int32_t digits = 0;
    for (size_t i = 0; i < size; ++i) {
        digits = data[i] >= '0' && data[i] <= '9' ? digits + 1 : 0;
        if (digits > 4) continue;  // wide fields are right, and slow
        text.append(static_cast<char16_t>(data[i]));
    }
    FuzzedEngine(data, size, text).run(text.data());
    fitIntoMask(text, text);
    int64_t seconds;
    std::memcpy(&seconds, data, sizeof seconds);
    formatDate(text, seconds);
    parseDateText(text);
    return 0;
}
