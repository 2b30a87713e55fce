// Strings: the value objects, which `new String` gives as well, and their constructor.
#pragma once

#include "objects/constructor_object.h"
#include "objects/text_instance.h"

namespace quorvelin {

class JSStringObject final : public JSTextInstance {
  public:
    // Copies the text, or takes it over.
    template <typename Text>
    JSStringObject(JSObject* constructor, JSObject* inner, Text&& value)
        : JSTextInstance(constructor, inner, std::forward<Text>(value)) {
        setEngineClass(EngineClass::string);
    }

    JSObject* getItem(int32_t index, JSContext* ctx, JSObject* receiver) override;
    JSObject* setItem(int32_t index, JSObject* value, JSContext* ctx, JSObject* receiver) override;
    void deleteItem(int32_t index, JSContext* ctx, JSObject* receiver) override;
    // A new string value of the same text.
    JSObject* asObject(JSContext* ctx, JSObject* receiver) override;
    void className(BString& out, JSContext* ctx, JSObject* receiver) override;
    int32_t getLength(JSObject* receiver) override;
    bool dispatchMember(JSMemberRequest& request) override;

    // The first of each pair takes the script's arguments, the second the converted values.
    virtual void charAt(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void charAtIndex(BString& out, int32_t index);
    virtual int32_t charCodeAt(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual int32_t charCodeAtIndex(int32_t index);
    virtual void concat(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual int32_t indexOf(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual int32_t indexOfText(const BString& text, int32_t from);
    // The next six exist by name only. They read their arguments, because a conversion may run script code,
    // and give a fixed answer.
    virtual int32_t lastIndexOf(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual int32_t lastIndexOfText(const BString& text, int32_t from);
    virtual void match(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void matchText(BString& out, const BString& text);
    virtual void replace(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void search(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void searchText(BString& out, const BString& text);
    virtual void slice(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void sliceRange(BString& out, int32_t start, int32_t end);
    virtual void substr(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void substrRange(BString& out, int32_t start, int32_t length);
    virtual void substring(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void substringRange(BString& out, int32_t start, int32_t end);
    virtual void toLowerCase(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void lowerCased(BString& out);
    virtual void toUpperCase(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual void upperCased(BString& out);
};

class JSStringConstructor final : public JSConstructorObject {
  public:
    JSStringConstructor() : JSConstructorObject(WellKnownName::StringClass) {}

    // The text of the list of arguments as a whole.
    JSObject* call(JSObject* args, JSContext* ctx, JSObject* receiver) override;
    bool dispatchMember(JSMemberRequest& request) override;

    // The text of the characters with the given codes.
    virtual void fromCharCode(BString& out, JSObject* args, JSContext* ctx, JSObject* receiver);
};

}  // namespace quorvelin
