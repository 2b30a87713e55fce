// JSUtil, the object `util`: three formatters that give a text and write nothing anywhere.
#pragma once

#include "objects/js_object.h"

namespace quorvelin {

class JSUtil final : public JSObject {
  public:
    bool dispatchMember(JSMemberRequest& request) override;

    // The first of each pair takes the script's arguments. A missing argument gives the empty text.
    virtual void callPrintx(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void printx(BString& out, const BString& mask, const BString& text);
    virtual void callPrintd(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver);
    // `time` in seconds since 1970-01-01 00:00:00 UTC.
    virtual void printd(BString& out, const BString& format, double time);
};

}  // namespace quorvelin
