// Names are atoms: every name that is compared - the engine's own names, identifiers in trees, names of
// member cells - is stored once per process and known by its address, so that comparing two names is
// comparing two pointers.
//
// `Atom` is the stored text. It looks like a BString to whoever is handed one (`text()`), and a BString that
// comes from the table can be turned back into its atom without a search. `Name` is the counted handle.
// A name leaves the table with its last handle, so that names made up at run time cost no memory for good.
// The table may be used by machines on several threads.
#pragma once

#include <atomic>
#include <cstdint>

#include "foundation/bstring.h"

namespace quorvelin {

class Atom {
  public:
    Atom(const Atom&) = delete;
    Atom& operator=(const Atom&) = delete;

    const BString& text() const { return text_; }

    // Which of the engine's own names this is (the index in `well_known_names.h`), or -1.
    int32_t wellKnown() const { return wellKnown_; }

    // How many scopes below the root of any machine have a cell of this name, at least. While there are none,
    // a name can only be the root's, and no chain of calls needs to be climbed for it.
    bool isInScopes() const { return scopes_.load(std::memory_order_relaxed) != 0; }
    void enterScope() const { scopes_.fetch_add(1, std::memory_order_relaxed); }
    void leaveScope() const { scopes_.fetch_sub(1, std::memory_order_relaxed); }

    // The atom of a text that came from the table, null for any other text. Costs one comparison.
    static const Atom* ofInternedText(const BString& text) {
        if (!text.isInterned()) return nullptr;
        // The text is the first member, so that its address is the atom's. The compiler must not follow the
        // address: where it sees a text that is no part of an atom it does not know that such a text never
        // gets here, and warns.
        const BString* address = &text;
        __asm__("" : "+r"(address));
        return reinterpret_cast<const Atom*>(address);
    }

  private:
    friend class NameTable;
    friend class Name;

    Atom() = default;
    ~Atom() = default;

    BString text_;
    uint32_t hash_ = 0;
    int32_t wellKnown_ = -1;
    mutable std::atomic<uint32_t> holders_{0};
    mutable std::atomic<uint32_t> scopes_{0};
    Atom* next_ = nullptr;
};

class Name {
  public:
    // No name; `text()` is the empty text, and no other name equals it but another empty handle.
    Name() = default;

    // The name with this text, stored if it is new. Without memory the result is the empty handle.
    explicit Name(const BString& text);
    explicit Name(const char16_t* text) : Name(BString(text)) {}

    // Another handle to an atom that somebody holds.
    explicit Name(const Atom* atom) : atom_(atom) { addHolder(); }

    // The name with this text if anybody holds it, else the empty handle. Stores nothing.
    static Name find(const BString& text);

    Name(const Name& other) : atom_(other.atom_) { addHolder(); }
    Name(Name&& other) noexcept : atom_(other.atom_) { other.atom_ = nullptr; }
    Name& operator=(const Name& other) {
        Name copy(other);
        return *this = static_cast<Name&&>(copy);
    }
    Name& operator=(Name&& other) noexcept {
        const Atom* mine = atom_;
        atom_ = other.atom_;
        other.atom_ = mine;
        return *this;
    }
    ~Name() { dropHolder(); }

    const Atom* atom() const { return atom_; }
    const BString& text() const { return atom_ != nullptr ? atom_->text() : emptyText(); }
    friend bool operator==(const Name& a, const Name& b) { return a.atom_ == b.atom_; }

  private:
    static const BString& emptyText();
    void addHolder() const {
        // The engine's own names live for ever and are not counted: they are on every hot path.
        if (atom_ != nullptr && atom_->wellKnown_ < 0)
            atom_->holders_.fetch_add(1, std::memory_order_relaxed);
    }
    void dropHolder() const {
        if (atom_ != nullptr && atom_->wellKnown_ < 0) dropCounted(atom_);
    }
    static void dropCounted(const Atom* atom);

    const Atom* atom_ = nullptr;
};

// Turns whatever text an operation was handed into the atom to compare with, for the time of the operation:
// at once for a text from the table, by a search otherwise. When no such name is stored anywhere the atom is
// null, and no member cell can have that name.
class NameLookup {
  public:
    explicit NameLookup(const BString& text) : atom_(Atom::ofInternedText(text)) {
        if (atom_ == nullptr) {
            found_ = Name::find(text);
            atom_ = found_.atom();
        }
    }
    const Atom* atom() const { return atom_; }

  private:
    Name found_;
    const Atom* atom_;
};

}  // namespace quorvelin
