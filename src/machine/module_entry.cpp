#include "machine/module_entry.h"

#include "machine/information_block.h"
#include "machine/module_state.h"

// Stands in every shared object, at an address of its own: the operating system's name for this module.
extern "C" void* __dso_handle;

namespace quorvelin {

namespace {

[[gnu::section(QUORVELIN_INFORMATION_SECTION),
  gnu::used]] constinit const InformationBlock kBlockOfThisModule = kInformationBlock;

[[gnu::constructor]] void attach() {
    moduleEntryPoint(&__dso_handle, ModuleEvent::processAttach);
}
[[gnu::destructor]] void detach() {
    moduleEntryPoint(&__dso_handle, ModuleEvent::processDetach);
}

}  // namespace

}  // namespace quorvelin

quorvelin::BClassFactory* queryClassFactoryLocal() {
    return quorvelin::moduleFactory();
}
