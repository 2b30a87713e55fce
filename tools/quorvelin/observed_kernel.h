// The program's machine: a machine that tells somebody of every message and of every line that a script
// prints.
#pragma once

#include "machine/kernel.h"

namespace quorvelin::tool {

// Is told what a machine has to say. The texts are borrowed for the time of the call.
class MachineObserver {
  public:
    virtual ~MachineObserver() = default;
    // A message, and the position in the script text at which it was reported.
    virtual void messageReported(const BString& message, int32_t line, int32_t column) = 0;
    virtual void linePrinted(const BString& text) = 0;
};

class ObservedKernel final : public JSKernel {
  public:
    // The observer is borrowed and must outlive the machine and its consoles.
    explicit ObservedKernel(MachineObserver* observer) : observer_(observer) {}

    void reportError(const BString& message) override;
    JSObject* makeConsole(JSContext* ctx, JSObject* receiver) override;

  private:
    MachineObserver* observer_;
};

}  // namespace quorvelin::tool
