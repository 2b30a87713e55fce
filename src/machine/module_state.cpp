#include "machine/module_state.h"

#include "machine/class_factory.h"

namespace quorvelin {

namespace {

constinit ModuleState state = {u"JavaScript plug-in", nullptr, nullptr};

}  // namespace

ModuleState& moduleState() {
    return state;
}

bool moduleEntryPoint(void* handle, ModuleEvent event) {
    if (event == ModuleEvent::processAttach) state.handle = handle;
    return true;
}

quorvelinfactory* moduleFactory() {
    if (state.factory == nullptr) state.factory = quorvelinfactory::create();
    return state.factory;
}

}  // namespace quorvelin
