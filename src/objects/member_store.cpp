#include "objects/member_store.h"

#include "foundation/well_known_names.h"
#include "objects/js_property.h"

namespace quorvelin {

void MemberStore::countIn(const JSProperty* cell, int32_t step) {
    if (cell == nullptr) return;
    if (cell->computesName()) {
        computedCount_ += step;
    } else if (cell->name().atom() != nameAtom(WellKnownName::empty)) {
        namedCount_ += step;
    }
}

int32_t MemberStore::find(const Atom* atom, const BString& name, JSContext* ctx, JSObject* receiver) const {
    if (computedCount_ == 0) {
        if (atom == nullptr) return -1;
        if (namedCount_ == 0 && atom != nameAtom(WellKnownName::empty)) return -1;
        for (int32_t i = 0; i < cells_.count(); ++i) {
            const JSProperty* cell = cells_.at(i);
            if (cell != nullptr && cell->name().atom() == atom) return i;
        }
        return -1;
    }
    for (int32_t i = 0; i < cells_.count(); ++i) {
        JSProperty* cell = cells_.at(i);
        if (cell == nullptr) continue;
        if (!cell->computesName()) {
            if (atom != nullptr && cell->name().atom() == atom) return i;
            continue;
        }
        BString answered;
        cell->memberName(answered, ctx, receiver);
        if (answered == name) return i;
    }
    return -1;
}

JSProperty* MemberStore::peek(const Atom* atom, int32_t& hint) const {
    if (namedCount_ == 0 || computedCount_ != 0) return nullptr;
    if (!mayRepeatNames_ && hint < cells_.count()) {
        JSProperty* cell = cells_.at(hint);
        if (cell != nullptr && cell->name().atom() == atom) return cell;
    }
    for (int32_t i = 0; i < cells_.count(); ++i) {
        JSProperty* cell = cells_.at(i);
        if (cell != nullptr && cell->name().atom() == atom) {
            hint = i;
            return cell;
        }
    }
    return nullptr;
}

bool MemberStore::appendRepeatable(JSProperty* cell) {
    mayRepeatNames_ = true;
    return append(cell);
}

bool MemberStore::append(JSProperty* cell) {
    if (!cells_.append(cell)) return false;
    countIn(cell, 1);
    return true;
}

JSProperty* MemberStore::replace(int32_t index, JSProperty* cell) {
    JSProperty* old = cells_.at(index);
    cells_.at(index) = cell;
    countIn(old, -1);
    countIn(cell, 1);
    return old;
}

JSProperty* MemberStore::erase(int32_t index) {
    JSProperty* cell = cells_.erase(index);
    countIn(cell, -1);
    return cell;
}

bool MemberStore::appendEmpty(int32_t copies) {
    if (copies > kMostEntries - count()) return false;
    // The cells are appended one at a time as far as the growth of the array goes.
    JSProperty* none = nullptr;
    while (copies > 0) {
        const int32_t room = cells_.capacity() - cells_.count();
        const int32_t step = room <= 0 ? 1 : copies < room ? copies : room;
        if (!cells_.insert(cells_.count(), none, step)) return false;
        copies -= step;
    }
    return true;
}

void MemberStore::forgetAll() {
    cells_.clear();
    namedCount_ = 0;
    computedCount_ = 0;
}

void MemberStore::swap(MemberStore& other) {
    cells_.swap(other.cells_);
    std::swap(namedCount_, other.namedCount_);
    std::swap(computedCount_, other.computedCount_);
    std::swap(mayRepeatNames_, other.mayRepeatNames_);
}

}  // namespace quorvelin
