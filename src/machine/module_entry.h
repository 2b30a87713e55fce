// The one export of the module.
#pragma once

#include "machine/class_factory.h"

extern "C" {

/// The module's class factory. The first call makes it; later calls give the same one. It is borrowed: no
/// call adds a reference, so a host that keeps it adds its own. Null when memory fails; the next call tries
/// again. The first call is to come from one thread.
[[gnu::visibility("default")]] quorvelin::BClassFactory* queryClassFactoryLocal();

}  // extern "C"
