// JSConstructorObject, the common base of the constructors of the standard classes: an object without a
// constructor of its own that goes by the name of its class and serves as the inner object of all instances.
#pragma once

#include "foundation/well_known_names.h"
#include "objects/js_object.h"

namespace quorvelin {

class JSConstructorObject : public JSObject {
  public:
    explicit JSConstructorObject(WellKnownName className) : className_(className) {}

    // Stores nothing and gives the value.
    JSObject* assign(JSObject* value, JSContext* ctx, JSObject* receiver) override;
    void memberName(BString& out, JSContext* ctx, JSObject* receiver) override;

  protected:
    // How every constructor ends: stores the object that was made into the cell of the running `new`, if
    // there is one, and gives it. Takes the reference over; null stays null.
    static JSObject* finishConstruction(JSObject* made, JSContext* ctx, JSObject* receiver);

  private:
    WellKnownName className_;
};

}  // namespace quorvelin
