// Names: how a context finds who answers a name.
//
// A name is looked for in this context and then up the chain, which is the chain of calls: as deep as the
// script has called. So the search is a loop and not a recursion. Only a context of a host's own is asked by
// its virtual operation, and so is the root, behind which nothing follows.
#include "foundation/heap_block.h"
#include "objects/js_context.h"
#include "objects/member_request.h"

namespace quorvelin {

bool JSContext::ownsName(const NameQuery& query) {
    if (findMember(query.name, query.ctx, query.receiver) >= 0) return true;
    // The engine's contexts answer no names but the engine's own. A host's class may.
    if (isEngines_ && parent() != nullptr && !query.isWellKnown()) return false;
    JSMemberRequest request(query.name, JSRequestOp::exists, nullptr, query.ctx, query.receiver);
    return dispatchMember(request);
}

JSContext::Holder JSContext::holderOf(const NameQuery& query) {
    return {ownsName(query) ? Holder::self : Holder::nobody};
}

// No context between this one and the root can have the name.
bool JSContext::isRootsAlone(const Atom* atom) const {
    return state_ != nullptr && atom != nullptr && atom->wellKnown() < 0 && state_->objectScopes == 0 &&
           !atom->isInScopes();
}

JSContext::Place JSContext::findPlace(const NameQuery& query) {
    if (isRootsAlone(query.atom) && state_->root != this) {
        int32_t hint = 0;
        if (state_->root->members().peek(query.atom, hint) != nullptr) {
            return {state_->root, {Holder::nobody}, true};
        }
    }
    bool sawLateObject = false;
    JSContext* lateStart = this;
    for (JSContext* context = this;; context = context->parent()) {
        const bool asksItself = !context->isEngines_ || context->parent() == nullptr;
        if (context != this && asksItself) {
            // Quirk: what the chain has comes before the this objects below it, so a bare name in a method is
            // a global before it is a member.
            if (sawLateObject && !context->hasMember(query.name, query.ctx, query.receiver)) {
                if (JSObject* object = lateStart->findLateObject(query, context))
                    return {this, {Holder::object, object}, false};
            }
            return {context, {Holder::nobody}, true};
        }
        const Holder holder = context->holderOf(query);
        if (holder.kind != Holder::nobody) return {context, holder, false};
        if (context->parent() == nullptr) return {context, {Holder::nobody}, false};
        if (sawLateObject && query.purpose == NameQuery::Purpose::call) {
            // Quirk: a parameter, or a member of the object of a `with`, is not called by its name; but the
            // chain has the name, and so the this objects below are not asked either.
            NameQuery exists = query;
            exists.purpose = NameQuery::Purpose::exists;
            if (context->holderOf(exists).kind != Holder::nobody) {
                sawLateObject = false;
                lateStart = context->parent();
            }
        }
        sawLateObject = sawLateObject || context->lateObject() != nullptr;
    }
}

// The this object that has the name, of the contexts from here to `end`; those of the outer calls come first.
JSObject* JSContext::findLateObject(const NameQuery& query, JSContext* end) {
    HeapBlock<JSObject*> objects;
    size_t count = 0;
    for (JSContext* context = this; context != end; context = context->parent()) {
        JSObject* object = context->lateObject();
        // A plain call hands the this object of its caller on, so most of them are the same.
        if (object == nullptr || (count > 0 && objects[count - 1] == object)) continue;
        if (!objects.growTo(count + 1)) return nullptr;
        objects[count++] = object;
    }
    while (count > 0) {
        JSObject* object = objects[--count];
        if (object->hasMember(query.name, query.ctx, query.receiver)) return object;
    }
    return nullptr;
}

JSProperty* JSContext::peekCell(const Atom* atom, int32_t& hint) {
    // Names of the engine's own may be answered by a dispatch.
    if (state_ == nullptr || state_->stoppedContexts != 0 || atom == nullptr || atom->wellKnown() >= 0)
        return nullptr;
    if (isRootsAlone(atom)) return state_->root->members().peek(atom, hint);
    for (JSContext* context = this; context != nullptr; context = context->parent()) {
        if (context->asksObjectFirst_ || !context->isEngines_) return nullptr;
        if (context->firstStore_ != nullptr) {
            if (JSProperty* cell = context->firstStore_->peek(atom, hint)) return cell;
        }
        if (JSProperty* cell = context->members().peek(atom, hint)) return cell;
    }
    return nullptr;
}

bool JSContext::hasMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    const NameLookup lookup(name);
    const NameQuery query{name, NameQuery::Purpose::exists, ctx, receiver, lookup.atom()};
    const Place place = findPlace(query);
    if (place.up) return place.context->hasMember(name, ctx, receiver);
    return place.holder.kind != Holder::nobody;
}

JSValueType JSContext::memberType(const BString& name, JSContext* ctx, JSObject* receiver) {
    const NameLookup lookup(name);
    const NameQuery query{name, NameQuery::Purpose::type, ctx, receiver, lookup.atom()};
    const Place place = findPlace(query);
    if (place.up) return place.context->memberType(name, ctx, receiver);
    switch (place.holder.kind) {
        case Holder::object:
            return place.holder.who->memberType(name, ctx, receiver);
        case Holder::special:
            return place.context->specialType(query);
        default:
            return place.context->JSObject::memberType(name, ctx, receiver);
    }
}

JSObject* JSContext::getMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    const NameLookup lookup(name);
    const NameQuery query{name, NameQuery::Purpose::get, ctx, receiver, lookup.atom()};
    const Place place = findPlace(query);
    if (place.up) return place.context->getMember(name, ctx, receiver);
    switch (place.holder.kind) {
        case Holder::object:
            return place.holder.who->getMember(name, ctx, receiver);
        case Holder::special:
            return place.context->specialGet(query);
        default:
            return place.context->JSObject::getMember(name, ctx, receiver);
    }
}

JSObject* JSContext::setMember(const BString& name, JSObject* value, JSContext* ctx, JSObject* receiver) {
    const NameLookup lookup(name);
    const NameQuery query{name, NameQuery::Purpose::set, ctx, receiver, lookup.atom()};
    const Place place = findPlace(query);
    if (place.up) return place.context->setMember(name, value, ctx, receiver);
    switch (place.holder.kind) {
        case Holder::object:
            return place.holder.who->setMember(name, value, ctx, receiver);
        case Holder::special:
            return place.context->specialSet(query, value);
        default:
            return place.context->JSObject::setMember(name, value, ctx, receiver);
    }
}

bool JSContext::deleteMember(const BString& name, JSContext* ctx, JSObject* receiver) {
    const NameLookup lookup(name);
    const NameQuery query{name, NameQuery::Purpose::remove, ctx, receiver, lookup.atom()};
    const Place place = findPlace(query);
    if (place.up) return place.context->deleteMember(name, ctx, receiver);
    switch (place.holder.kind) {
        case Holder::object:
            return place.holder.who->deleteMember(name, ctx, receiver);
        case Holder::special:
            place.context->specialDelete(query);
            return false;
        default:
            return place.context->JSObject::deleteMember(name, ctx, receiver);
    }
}

JSObject* JSContext::callMember(const BString& name, JSObject* args, JSContext* ctx, JSObject* receiver) {
    const NameLookup lookup(name);
    const NameQuery query{name, NameQuery::Purpose::call, ctx, receiver, lookup.atom()};
    const Place place = findPlace(query);
    if (place.up) return place.context->callMember(name, args, ctx, receiver);
    switch (place.holder.kind) {
        case Holder::object:
            return place.holder.who->callMember(name, args, ctx, receiver);
        case Holder::special:
            return place.context->specialCall(query, args);
        default:
            return place.context->JSObject::callMember(name, args, ctx, receiver);
    }
}

JSValueType JSContext::specialType(const NameQuery&) {
    return JSValueType::undefined;
}

JSObject* JSContext::specialGet(const NameQuery&) {
    return nullptr;
}

JSObject* JSContext::specialSet(const NameQuery&, JSObject*) {
    return nullptr;
}

void JSContext::specialDelete(const NameQuery&) {}

JSObject* JSContext::specialCall(const NameQuery&, JSObject*) {
    return nullptr;
}

}  // namespace quorvelin
