// JSGlobalContext, the root of every chain of contexts: it owns the standard objects, answers their names and
// is the one place where values are made.
#pragma once

#include "evaluator/contexts.h"

namespace quorvelin {

class JSGlobalContext : public JSGlobalBase {
  public:
    // Builds the standard objects. Without memory one of them is missing, and its name then gives null.
    JSGlobalContext();
    ~JSGlobalContext() override;

    bool hasMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSValueType memberType(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* getMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* setMember(const BString& name, JSObject* value, JSContext* ctx, JSObject* receiver) override;
    bool deleteMember(const BString& name, JSContext* ctx, JSObject* receiver) override;
    JSObject* callMember(const BString& name, JSObject* args, JSContext* ctx, JSObject* receiver) override;

    // Each reports "Out of memory" and gives null when memory fails; `makeRegExp` gives null without a
    // message.
    JSObject* makeString(const BString& text, JSObject* receiver) override;
    JSObject* makeRegExp(const BString& source, JSObject* receiver) override;
    JSObject* makeBoolean(bool value, JSObject* receiver) override;
    JSObject* makeNumberText(const BString& text, int32_t radix, JSObject* receiver) override;
    JSObject* makeNumber(const JSNumberValue& value, JSObject* receiver) override;
    JSObject* makeArraySized(int32_t count, JSObject* receiver) override;
    JSObject* makeArray(JSObject* receiver) override;
    // Dates; the fields that the shorter forms leave out are 0, and the year is a full one.
    JSObject* makeDateNumber(const JSNumberValue& milliseconds, JSObject* receiver) override;
    JSObject* makeDateFields4(int32_t year, int32_t month, int32_t day, int32_t hours,
                              JSObject* receiver) override;
    JSObject* makeDateFields5(int32_t year, int32_t month, int32_t day, int32_t hours, int32_t minutes,
                              JSObject* receiver) override;
    JSObject* makeDateFields6(int32_t year, int32_t month, int32_t day, int32_t hours, int32_t minutes,
                              int32_t seconds, JSObject* receiver) override;
    JSObject* makeDateFields3(int32_t year, int32_t month, int32_t day, JSObject* receiver) override;
    // From the text of the value.
    JSObject* makeDateValue(JSObject* value, JSObject* receiver) override;
    JSObject* makeDateNow(JSObject* receiver) override;
    JSObject* makeFunction(JSFunctionNode* node, JSObject* receiver) override;

    // A function object for a tree that the host holds: its constructor is its inner object as well.
    virtual JSObject* makeFunctionPlain(JSFunctionNode* node, JSObject* receiver);

  protected:
    JSObject* adoptString(BString&& text, JSObject* receiver) override;

  private:
    JSObject* orOutOfMemory(JSObject* made);

    // In the order of construction, which is the order in which they are let go.
    JSObject* arrayConstructor_;
    JSObject* booleanConstructor_;
    JSObject* stringConstructor_;
    JSObject* numberConstructor_;
    JSObject* functionConstructor_;
    JSObject* dateConstructor_;
    JSObject* mathObject_;
    JSObject* regExpConstructor_;
    JSObject* utilObject_;

    friend struct GlobalName;
};

}  // namespace quorvelin
