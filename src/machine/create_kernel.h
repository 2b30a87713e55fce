// The seam between the class factory and the machine: the factory knows of a machine only that it is a smart
// object.
#pragma once

#include "foundation/smart_object.h"

namespace quorvelin {

// A new machine with one holder, the caller. Null when memory fails.
BSmartObject* createKernel();

}  // namespace quorvelin
