// Where `query` stands in the objects of the framework classes that do not put it fourth. `queryOn` of such a
// class's identity record reaches the operation through these shapes; a host that passes its object by
// address to `queryOn` lays it out accordingly. The operations in front of `query` are the class's own and
// are never called through here.
#pragma once

#include "foundation/smart_object.h"

namespace quorvelin {

// `query` as the fifth operation: `SException`.
class ExceptionQueryFace {
  public:
    virtual ~ExceptionQueryFace() = default;
    virtual void secondOperation() = 0;
    virtual void thirdOperation() = 0;
    virtual void fourthOperation() = 0;
    virtual void* query(const stype_info& id, IBQueryVisitor* visitor) = 0;
};

// `query` as the sixth operation: `IProgressCallback`, and the second interface of `IShell`.
class SixthOperationQueryFace {
  public:
    virtual ~SixthOperationQueryFace() = default;
    virtual void secondOperation() = 0;
    virtual void thirdOperation() = 0;
    virtual void fourthOperation() = 0;
    virtual void fifthOperation() = 0;
    virtual void* query(const stype_info& id, IBQueryVisitor* visitor) = 0;
};

// `query` in the face of the virtual base: `IActionTarget`.
class ActionTargetQueryFace : public virtual BNotifySender {
  protected:
    ~ActionTargetQueryFace() = default;
};

// The second interface of an `IShell` object lies behind its first ten words.
inline constexpr size_t kShellSecondInterfaceOffset = 10 * sizeof(void*);

}  // namespace quorvelin
