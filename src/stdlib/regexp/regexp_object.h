// Regular expressions as scripts see them: the instances, each with its compiled pattern, and their
// constructor, which also keeps what the last run found.
//
// Running always begins at the start of the text. `lastIndex`, `global` and `multiline` are stored and shown,
// and change nothing. A faulty pattern is no error: such an instance matches everything as the empty text.
#pragma once

#include "objects/constructor_object.h"
#include "objects/parented_object.h"
#include "stdlib/regexp/regexp_matcher.h"

namespace quorvelin {

class JSRegExpConstructor final : public JSConstructorObject {
  public:
    JSRegExpConstructor() : JSConstructorObject(WellKnownName::RegExp) {}

    // Gives a new instance, with or without `new`.
    JSObject* call(JSObject* args, JSContext* ctx, JSObject* receiver) override;
    bool dispatchMember(JSMemberRequest& request) override;

    // What the last run of an instance found; each gives a copy.
    virtual void getInput(BString& out);
    virtual void getLastMatch(BString& out);
    virtual void getLastParen(BString& out);
    virtual void getLeftContext(BString& out);
    virtual void getRightContext(BString& out);
    virtual bool getMultiline();
    virtual void setMultiline(bool value);

    // Takes over the results of a run on `text`.
    void beginRun(const BString& text);
    void endRun(const JSRegExpMatcher& matcher, bool isMatch, uint32_t start, uint32_t length,
                const BString& match);

  private:
    BString input_;
    BString lastMatch_;
    BString lastParen_;
    BString leftContext_;
    BString rightContext_;
    bool multiline_ = false;
};

class JSRegExpObject final : public JSInstance {
  public:
    // References both; either may be null. Without a pattern yet, as with a faulty one.
    JSRegExpObject(JSRegExpConstructor* constructor, JSObject* inner)
        : JSInstance(constructor, inner), maker_(constructor) {}
    ~JSRegExpObject() override;

    JSValueType valueType(JSContext* ctx, JSObject* receiver) override;
    // An instance is called like its `exec`.
    JSObject* call(JSObject* args, JSContext* ctx, JSObject* receiver) override;
    // The source alone, without slashes and flags.
    void asExpression(BString& out, JSContext* ctx, JSObject* receiver) override;
    bool dispatchMember(JSMemberRequest& request) override;

    virtual bool getGlobal();
    virtual bool getIgnoreCase();
    virtual int32_t getLastIndex();
    virtual void setLastIndex(int32_t value);
    virtual void getSource(BString& out);
    // Takes pattern and flags from arguments.
    virtual void compile(JSObject* args, JSContext* ctx, JSObject* receiver);
    // Compiles. The result tells why there is no tree where that is not the pattern's own fault.
    virtual PatternFailure setPattern(const BString& pattern, const BString& flags);
    // Runs on a text and gives the result object, null without a match. Without an argument the text is that
    // of the last run of any instance.
    virtual JSObject* exec(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual JSObject* execText(const BString& text, JSContext* ctx, JSObject* receiver);
    virtual bool test(JSObject* args, JSContext* ctx, JSObject* receiver);
    virtual bool testText(const BString& text, JSContext* ctx);

  private:
    struct Run;

    // The constructor that keeps the results; null once a script has put something else in its place.
    JSRegExpConstructor* keeper() const { return constructorObject() == maker_ ? maker_ : nullptr; }
    bool runOn(const BString& text, Run& run, JSContext* ctx);
    void freeTree();

    JSRegExpConstructor* maker_;  // not referenced
    BString source_;
    bool global_ = false;
    bool ignoreCase_ = false;
    int32_t lastIndex_ = 0;
    JSPatternNode* root_ = nullptr;
};

}  // namespace quorvelin
