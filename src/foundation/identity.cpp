#include "foundation/identity.h"

#include "foundation/query_faces.h"
#include "foundation/smart_object.h"

namespace quorvelin {

namespace {

class IdentityRecord final : public stype_info {
  public:
    constexpr IdentityRecord(const char* name, const char16_t* wideName, const BGuid& words, QueryRoute route)
        : stype_info(words.words[0], words.words[1], words.words[2], words.words[3]),
          name_(name),
          wideName_(wideName),
          route_(route) {}

    const char* name() const override { return name_; }
    const char16_t* wideName() const override { return wideName_; }

    void* queryOn(void* object, IBQueryVisitor* visitor) const override {
        if (object == nullptr) return nullptr;
        switch (route_) {
            case QueryRoute::object:
                return static_cast<IBTransportable*>(object)->query(*this, visitor);
            case QueryRoute::exception:
                return static_cast<ExceptionQueryFace*>(object)->query(*this, visitor);
            case QueryRoute::sender:
                return static_cast<BNotifySender*>(object)->query(*this, visitor);
            case QueryRoute::actionTarget:
                return static_cast<BNotifySender*>(static_cast<ActionTargetQueryFace*>(object))
                    ->query(*this, visitor);
            case QueryRoute::progressCallback:
                return static_cast<SixthOperationQueryFace*>(object)->query(*this, visitor);
            case QueryRoute::shell: {
                void* second = static_cast<unsigned char*>(object) + kShellSecondInterfaceOffset;
                return static_cast<SixthOperationQueryFace*>(second)->query(*this, visitor);
            }
        }
        return nullptr;
    }

  private:
    const char* name_;
    const char16_t* wideName_;
    QueryRoute route_;
};

// Constant data: the table stands before any code runs.
constexpr IdentityRecord kRecords[] = {
#define QUORVELIN_IDENTITY(name, w1, w2, w3, w4, route) \
    IdentityRecord(#name, u"" #name, BGuid{w1, w2, w3, w4}, QueryRoute::route),
    QUORVELIN_IDENTITIES(QUORVELIN_IDENTITY)
#undef QUORVELIN_IDENTITY
};

}  // namespace

const stype_info& identityOf(ClassId id) {
    return kRecords[static_cast<int32_t>(id)];
}

}  // namespace quorvelin
