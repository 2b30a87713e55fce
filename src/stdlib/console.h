// JSConsole, the script's view of a text console.
//
// All of its methods lead to empty operations. A host that has something to show on derives from this class
// and gives them bodies.
#pragma once

#include "objects/js_object.h"

namespace quorvelin {

class JSConsole : public JSObject {
  public:
    bool dispatchMember(JSMemberRequest& request) override;

    virtual void callShow(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void show();
    virtual void callHide(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void hide();
    // Calls `println` with the text of the first argument; without one nothing is called.
    virtual void callPrintln(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void println(const BString& text);
    // Empties the object's own members.
    virtual void callClear(JSObject* args, JSContext* ctx, JSObject* receiver);
    // Not called by `callClear`.
    virtual void clear();
};

}  // namespace quorvelin
