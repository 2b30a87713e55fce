// The two leaks that belong to the design. What is allocated while one of these stands is not looked for by
// the leak checker; everywhere else it finds what is lost.
#pragma once

#if defined(__SANITIZE_ADDRESS__)
#define QUORVELIN_CHECKS_LEAKS 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QUORVELIN_CHECKS_LEAKS 1
#endif
#endif

#ifdef QUORVELIN_CHECKS_LEAKS
#include <sanitizer/lsan_interface.h>
#endif

namespace quorvelin::support {

class LeakByDesign {
  public:
    LeakByDesign(const LeakByDesign&) = delete;
    LeakByDesign& operator=(const LeakByDesign&) = delete;

  protected:
#ifdef QUORVELIN_CHECKS_LEAKS
    LeakByDesign() {
        __lsan_disable();
    }
    ~LeakByDesign() {
        __lsan_enable();
    }
#else
    LeakByDesign() {}
    ~LeakByDesign() {}
#endif
};

// Objects of a script that hold one another are never freed, as references are counted.
class LeakOfACycle final : public LeakByDesign {};

// The members of a console that a script clears are forgotten, not released.
class LeakOfAClearedConsole final : public LeakByDesign {};

}  // namespace quorvelin::support
