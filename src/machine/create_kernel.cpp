#include "machine/create_kernel.h"

namespace quorvelin {

// There is no machine yet.
BSmartObject* createKernel() {
    return nullptr;
}

}  // namespace quorvelin
