#include "machine/create_kernel.h"

#include "machine/kernel.h"

namespace quorvelin {

BSmartObject* createKernel() {
    return new JSKernel();
}

}  // namespace quorvelin
