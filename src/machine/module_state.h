// What the module knows of itself while it is loaded. One of these exists per loaded copy of the engine.
#pragma once

#include <cstdint>

namespace quorvelin {

class quorvelinfactory;

struct ModuleState {
    // Set at start-up; nothing in the module depends on it.
    const char16_t* description;
    // The module as the operating system knows it; null until it has attached the module to the process.
    void* handle;
    // The one factory, or null: it is made at the first request and clears this word when it dies.
    quorvelinfactory* factory;
};

ModuleState& moduleState();

enum class ModuleEvent : uint32_t { processDetach = 0, processAttach = 1 };

// The module's entry point, through which the operating system reports what happens to it. Stores the handle
// at `processAttach`. Always true: the module never refuses to be loaded.
bool moduleEntryPoint(void* handle, ModuleEvent event);

// The module's factory, made at the first call; borrowed. Null when memory fails, and the next call tries
// again. The first call is not guarded: the host makes it from one thread.
quorvelinfactory* moduleFactory();

}  // namespace quorvelin
