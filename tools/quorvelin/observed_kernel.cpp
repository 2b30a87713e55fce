#include "quorvelin/observed_kernel.h"

#include "stdlib/console.h"

namespace quorvelin::tool {

namespace {

class ObservedConsole final : public JSConsole {
  public:
    explicit ObservedConsole(MachineObserver* observer) : observer_(observer) {}
    void println(const BString& text) override { observer_->linePrinted(text); }

  private:
    MachineObserver* observer_;
};

}  // namespace

void ObservedKernel::reportError(const BString& message) {
    int32_t line = 0;
    int32_t column = 0;
    getPosition(line, column);
    observer_->messageReported(message, line, column);
    JSKernel::reportError(message);
}

JSObject* ObservedKernel::makeConsole(JSContext*, JSObject*) {
    return new ObservedConsole(observer_);
}

}  // namespace quorvelin::tool
