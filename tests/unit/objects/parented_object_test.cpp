// Inheritance: objects behind which another one stands, and instances.
#include "objects/parented_object.h"

#include <gtest/gtest.h>

#include "support/script_machine.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

using support::asNumber;
using support::asString;
using support::className;
using support::memberName;
using support::textOf;

class Inheritance : public support::ScriptTest {
  protected:
    void set(JSObject* target, const char16_t* name, JSObject* value) {
        const Value stored(target->setMember(BString(name), value, ctx(), nullptr));
    }
    // A property of the object itself, whatever stands behind it.
    void setOwn(JSObject* target, const char16_t* name, JSObject* value) {
        const Value stored(target->JSObject::setMember(BString(name), value, ctx(), nullptr));
    }
    std::string read(JSObject* target, const char16_t* name) {
        return describe(Value(target->getMember(BString(name), ctx(), nullptr)).get());
    }
    std::string item(JSObject* target, int32_t index) {
        return describe(Value(target->memberAt(index, ctx(), nullptr)).get());
    }
    Value call(JSObject* target, const char16_t* name, JSObject* arguments = nullptr) {
        return Value(target->callMember(BString(name), arguments, ctx(), nullptr));
    }
};

// Quirk: all instances have it.
TEST_F(Inheritance, ANewNameWrittenToAnInstanceLandsOnTheConstructor) {
    EXPECT_EQ(run(u"x = new String('a'); x.foo = 1; y = new String('b'); y.foo"), "number 1");
    EXPECT_EQ(run(u"t = true; t.bar = 'shared'; f = false; f.bar"), "string shared");
}

TEST_F(Inheritance, AMemberOfTheConstructorIsVisibleInAllInstances) {
    const Value base = plainObject();
    const Value first(new JSInstance(base.get(), base.get()));
    const Value second(new JSInstance(base.get(), base.get()));
    set(base.get(), u"v", number(3).get());
    EXPECT_EQ(read(first.get(), u"v"), "number 3");
    EXPECT_EQ(read(second.get(), u"v"), "number 3");
}

TEST_F(Inheritance, ANameThatTheInstanceOwnsStaysOnItAndShadows) {
    const Value base = plainObject();
    const Value instance(new JSInstance(base.get(), base.get()));
    set(base.get(), u"v", number(1).get());
    setOwn(instance.get(), u"v", number(2).get());
    set(instance.get(), u"v", number(5).get());
    EXPECT_EQ(read(instance.get(), u"v"), "number 5");
    EXPECT_EQ(read(base.get(), u"v"), "number 1");
    EXPECT_TRUE(instance->deleteMember(BString(u"v"), ctx(), nullptr));
    EXPECT_EQ(read(instance.get(), u"v"), "number 1");
    EXPECT_TRUE(instance->deleteMember(BString(u"v"), ctx(), nullptr)) << "now the one behind";
    EXPECT_EQ(base->memberCount(ctx(), nullptr), 0);
}

TEST_F(Inheritance, MembersAreCountedOwnFirstThenThoseBehind) {
    const Value base = plainObject();
    const Value instance(new JSInstance(base.get(), base.get()));
    set(base.get(), u"a", number(10).get());
    set(base.get(), u"b", number(20).get());
    setOwn(instance.get(), u"own", number(1).get());
    EXPECT_EQ(instance->memberCount(ctx(), nullptr), 3);
    EXPECT_EQ(item(instance.get(), 0), "number 1");
    EXPECT_EQ(item(instance.get(), 1), "number 10");
    EXPECT_EQ(item(instance.get(), 2), "number 20");
    EXPECT_EQ(item(instance.get(), 3), "null");
    EXPECT_EQ(describe(Value(instance->getItem(1, ctx(), nullptr)).get()), "null")
        << "items are its own alone";
    machine->setCompletion(JSCompletion::breakLoop);
    EXPECT_EQ(instance->memberCount(ctx(), nullptr), 0);
    machine->setCompletion(JSCompletion::normal);
}

// Quirk: the write is ignored without a word.
TEST_F(Inheritance, WritingPrototypeChangesNothingAndGivesNoMessage) {
    EXPECT_EQ(run(u"x = new String('a'); x.prototype = 1; typeof x.prototype"), "string object");
    const Value base = plainObject();
    const Value instance(new JSInstance(nullptr, base.get()));
    set(instance.get(), u"prototype", number(1).get());
    EXPECT_EQ(Value(instance->getMember(BString(u"prototype"), ctx(), nullptr)).get(), base.get());
    EXPECT_EQ(instance->memberCount(ctx(), nullptr), 0);
}

TEST_F(Inheritance, CallOfPrototypeWithoutInnerObjectGivesUndefined) {
    EXPECT_EQ(run(u"f = Function('return 1;'); f.prototype(1)"), "null");
    const Value instance(new JSInstance(nullptr, nullptr));
    EXPECT_FALSE(call(instance.get(), u"prototype"));
    EXPECT_FALSE(Value(instance->getMember(BString(u"prototype"), ctx(), nullptr)));
}

TEST_F(Inheritance, CallOfPrototypeCallsTheInnerObjectWithTheSameArgumentsAndReceiver) {
    struct Base final : JSObject {
        JSObject* call(JSObject* args, JSContext* ctx, JSObject* receiver) override {
            arguments = args;
            context = ctx;
            cell = receiver;
            return nullptr;
        }
        JSObject* arguments = nullptr;
        JSContext* context = nullptr;
        JSObject* cell = nullptr;
    };
    const Owned<Base> base(new Base());
    const Value instance(new JSInstance(nullptr, base.get()));
    const Value arguments = list({});
    const Value receiver = plainObject();
    EXPECT_FALSE(Value(instance->callMember(BString(u"prototype"), arguments.get(), ctx(), receiver.get())));
    EXPECT_EQ(base->arguments, arguments.get());
    EXPECT_EQ(base->context, ctx());
    EXPECT_EQ(base->cell, receiver.get());
}

TEST_F(Inheritance, AMethodFoundUpTheChainRunsWithTheInstanceAsThis) {
    const Value base = plainObject();
    set(base.get(), u"method", function(u"return this;").get());
    const Value instance(new JSInstance(base.get(), base.get()));
    EXPECT_EQ(call(instance.get(), u"method").get(), instance.get());
}

TEST_F(Inheritance, AnOwnMethodRunsWithTheInstanceAsThis) {
    const Value base = plainObject();
    const Value instance(new JSInstance(base.get(), base.get()));
    setOwn(instance.get(), u"method", function(u"return this;").get());
    EXPECT_EQ(call(instance.get(), u"method").get(), instance.get());
    EXPECT_EQ(run(u"a = [7]; a.first = Function('return this[0];'); a.first()"), "number 7");
}

TEST_F(Inheritance, ChainOfSeveralObjectsIsWalkedToTheEnd) {
    const Value base = plainObject();
    const Value middle(new JSInstance(nullptr, base.get()));
    const Value instance(new JSInstance(nullptr, middle.get()));
    set(base.get(), u"v", number(9).get());
    EXPECT_EQ(read(instance.get(), u"v"), "number 9");
    EXPECT_TRUE(instance->hasMember(BString(u"v"), ctx(), nullptr));
    EXPECT_EQ(instance->memberType(BString(u"v"), ctx(), nullptr), JSValueType::number);
    set(instance.get(), u"w", number(8).get());
    EXPECT_EQ(base->memberCount(ctx(), nullptr), 2);
    EXPECT_EQ(middle->getLength(nullptr), 0);
}

TEST_F(Inheritance, ConvertingAnInstanceDoesNotAskTheObjectBehind) {
    const Value text = string(u"12");
    const Value instance(new JSInstance(nullptr, text.get()));
    EXPECT_EQ(instance->valueType(ctx(), nullptr), JSValueType::string) << "the type is forwarded";
    EXPECT_EQ(asString(instance.get(), ctx()), "undefined");
    EXPECT_EQ(asNumber(instance.get(), ctx()), "0");
    EXPECT_TRUE(instance->asBoolean(ctx(), nullptr));
    EXPECT_EQ(Value(instance->asObject(ctx(), nullptr)).get(), instance.get());
    EXPECT_FALSE(Value(instance->assign(text.get(), ctx(), nullptr)));
    EXPECT_FALSE(Value(instance->call(nullptr, ctx(), nullptr)));
}

TEST_F(Inheritance, ClassOfAnInstanceIsTheNameOfTheObjectBehind) {
    EXPECT_EQ(className(string(u"a").get(), ctx()), "String");
    EXPECT_EQ(className(list({}).get(), ctx()), "Array");
    const Value bare(new JSInstance(nullptr, nullptr));
    EXPECT_EQ(className(bare.get(), ctx()), "Array") << "the default rule";
}

TEST_F(Inheritance, ConstructorOfAStandardInstanceIsTheOneThatAScriptSet) {
    EXPECT_EQ(run(u"x = new String('a'); typeof x.constructor"), "string object");
    EXPECT_EQ(run(u"x.constructor"), "object");
    const Value text = string(u"a");
    EXPECT_FALSE(Value(text->getConstructor(ctx(), nullptr)));
}

// Quirk: deleting an instance cuts it off from its class.
TEST_F(Inheritance, ClearMembersDetachesAnInstanceForGood) {
    const Value base = plainObject();
    const Value instance(new JSInstance(nullptr, base.get()));
    set(base.get(), u"v", number(1).get());
    setOwn(instance.get(), u"w", number(2).get());
    instance->clearMembers(ctx(), nullptr);
    EXPECT_EQ(read(instance.get(), u"v"), "null");
    EXPECT_EQ(instance->memberCount(ctx(), nullptr), 0);
    EXPECT_EQ(read(base.get(), u"v"), "number 1");
    EXPECT_EQ(base->refCount(), 0);
    set(instance.get(), u"v", number(3).get());
    EXPECT_EQ(read(instance.get(), u"v"), "number 3");
    EXPECT_EQ(read(base.get(), u"v"), "number 1");
}

// ---- The rule by itself, without the instance's exceptions ----

class Forwarding : public Inheritance {
  protected:
    Value wrap(JSObject* inner) { return Value(new JSParentedObject(inner, nullptr)); }
};

TEST_F(Forwarding, GoesToTheInnerObjectForEverythingButItemsAndLength) {
    const Value inner = string(u"12");
    const Value object = wrap(inner.get());
    EXPECT_EQ(object->valueType(ctx(), nullptr), JSValueType::string);
    EXPECT_EQ(asString(object.get(), ctx()), "12");
    EXPECT_EQ(asNumber(object.get(), ctx()), "12");
    EXPECT_TRUE(object->asBoolean(ctx(), nullptr));
    EXPECT_EQ(className(object.get(), ctx()), "String");
    EXPECT_EQ(Value(object->getThis(ctx(), nullptr))->valueType(ctx(), nullptr), JSValueType::object)
        << "the this object of the last of the chain";
    EXPECT_EQ(object->getLength(nullptr), 0);
    EXPECT_EQ(describe(Value(object->getItem(0, ctx(), nullptr)).get()), "null");
    EXPECT_EQ(Value(object->callValueOf(nullptr, ctx(), nullptr)).get(), object.get());
}

TEST_F(Forwarding, NamesThatEveryObjectAnswersAreAnsweredByTheNearest) {
    const Value inner = string(u"12");
    const Value object = wrap(inner.get());
    EXPECT_EQ(read(object.get(), u"length"), "number 0");
    set(object.get(), u"length", number(2).get());
    EXPECT_EQ(object->getLength(nullptr), 2);
}

TEST_F(Forwarding, WithoutInnerObjectItIsAPlainObject) {
    const Value object = wrap(nullptr);
    EXPECT_EQ(object->valueType(ctx(), nullptr), JSValueType::object);
    EXPECT_FALSE(Value(object->assign(number(1).get(), ctx(), nullptr)));
    EXPECT_FALSE(Value(object->call(nullptr, ctx(), nullptr)));
    EXPECT_EQ(Value(object->getThis(ctx(), nullptr)).get(), object.get());
    object->setThis(nullptr, ctx(), nullptr);
    EXPECT_EQ(asString(object.get(), ctx()), "[object Array]");
    EXPECT_EQ(memberName(object.get(), ctx()), "");
    EXPECT_FALSE(Value(object->getConstructor(ctx(), nullptr)));
    set(object.get(), u"x", number(1).get());
    EXPECT_EQ(read(object.get(), u"x"), "number 1");
}

TEST_F(Forwarding, ClearMembersClearsTheInnerObjectToo) {
    const Value inner = plainObject();
    set(inner.get(), u"x", number(1).get());
    const Value object = wrap(inner.get());
    object->clearMembers(ctx(), nullptr);
    EXPECT_EQ(inner->memberCount(ctx(), nullptr), 0);
}

TEST_F(Forwarding, AssignAndCallGoThrough) {
    struct Inner final : JSObject {
        JSObject* assign(JSObject* value, JSContext*, JSObject*) override { return value->shared(); }
        JSObject* call(JSObject* args, JSContext*, JSObject*) override { return args->shared(); }
    };
    const Value inner(new Inner());
    const Value object = wrap(inner.get());
    const Value argument = number(1);
    EXPECT_EQ(Value(object->assign(argument.get(), ctx(), nullptr)).get(), argument.get());
    EXPECT_EQ(Value(object->call(argument.get(), ctx(), nullptr)).get(), argument.get());
}

}  // namespace
}  // namespace quorvelin
