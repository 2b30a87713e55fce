#include "foundation/name.h"

#include <cstring>
#include <mutex>
#include <new>

#include "foundation/well_known_names.h"
#include "host/allocator.h"

namespace quorvelin {

namespace detail {
const Atom* wellKnownAtoms[static_cast<int32_t>(WellKnownName::count)] = {};
}

// The table is split by hash so that machines on several threads seldom meet at one lock. Each part is a
// chained hash table whose chains go through the atoms themselves.
class NameTable {
  public:
    // Outlives every static object, as handles in them may be dropped at any moment of the process's end.
    static NameTable& instance() {
        alignas(NameTable) static unsigned char storage[sizeof(NameTable)];
        static NameTable* const table = built = new (storage) NameTable();
        return *table;
    }

    // Gives all memory back. Nothing that uses names may run afterwards.
    static void freeAll() {
        if (built == nullptr) return;
        for (Part& part : built->parts_) {
            for (uint32_t i = 0; i < part.chainCount; ++i) {
                for (Atom* atom = part.chains[i]; atom != nullptr;) {
                    Atom* next = atom->next_;
                    destroy(atom);
                    atom = next;
                }
            }
            _sfree(part.chains);
        }
        built = nullptr;
    }

    // The atom with the text and one holder more, or null: not there and not to be made, or no memory.
    const Atom* hold(const BString& text, bool make) {
        const uint32_t hash = hashOf(text);
        Part& part = partOf(hash);
        const std::lock_guard<std::mutex> lock(part.mutex);
        for (Atom* atom = part.chain(hash); atom != nullptr; atom = atom->next_) {
            if (atom->hash_ == hash && atom->text_ == text) {
                if (atom->wellKnown_ < 0) atom->holders_.fetch_add(1, std::memory_order_relaxed);
                return atom;
            }
        }
        if (!make) return nullptr;
        Atom* fresh = build(text, hash);
        if (fresh == nullptr || !part.add(fresh)) {
            destroy(fresh);
            return nullptr;
        }
        return fresh;
    }

    // One holder less; the last one takes the atom out.
    void drop(const Atom* atom) {
        uint32_t holders = atom->holders_.load(std::memory_order_relaxed);
        while (holders > 1) {
            if (atom->holders_.compare_exchange_weak(holders, holders - 1, std::memory_order_acq_rel)) return;
        }
        // Perhaps the last: decided under the lock, where nobody can find the atom anew.
        Part& part = partOf(atom->hash_);
        Atom* gone = nullptr;
        {
            const std::lock_guard<std::mutex> lock(part.mutex);
            if (atom->holders_.fetch_sub(1, std::memory_order_acq_rel) == 1) gone = part.remove(atom);
        }
        destroy(gone);
    }

    static void makeWellKnown(Atom* atom, int32_t index) { atom->wellKnown_ = index; }

  private:
    static constexpr uint32_t kPartCount = 16;

    struct Part {
        std::mutex mutex;
        Atom** chains = nullptr;
        uint32_t chainCount = 0;  // a power of two
        uint32_t count = 0;

        Atom* chain(uint32_t hash) const {
            return chainCount == 0 ? nullptr : chains[(hash / kPartCount) & (chainCount - 1)];
        }

        bool add(Atom* atom) {
            if (count >= chainCount && !widen() && chainCount == 0) return false;
            Atom*& head = chains[(atom->hash_ / kPartCount) & (chainCount - 1)];
            atom->next_ = head;
            head = atom;
            ++count;
            return true;
        }

        Atom* remove(const Atom* atom) {
            Atom** link = &chains[(atom->hash_ / kPartCount) & (chainCount - 1)];
            while (*link != atom) link = &(*link)->next_;
            Atom* gone = *link;
            *link = gone->next_;
            --count;
            return gone;
        }

        bool widen() {
            const uint32_t wider = chainCount == 0 ? 64 : chainCount * 2;
            Atom** fresh = static_cast<Atom**>(_smalloc(wider * sizeof(Atom*)));
            if (fresh == nullptr) return false;
            std::memset(fresh, 0, wider * sizeof(Atom*));
            for (uint32_t i = 0; i < chainCount; ++i) {
                for (Atom* atom = chains[i]; atom != nullptr;) {
                    Atom* next = atom->next_;
                    Atom*& head = fresh[(atom->hash_ / kPartCount) & (wider - 1)];
                    atom->next_ = head;
                    head = atom;
                    atom = next;
                }
            }
            _sfree(chains);
            chains = fresh;
            chainCount = wider;
            return true;
        }
    };

    // FNV-1a over the units.
    static uint32_t hashOf(const BString& text) {
        uint32_t hash = 2166136261u;
        for (int32_t i = 0; i < text.length(); ++i) hash = (hash ^ text[i]) * 16777619u;
        return hash;
    }

    Part& partOf(uint32_t hash) { return parts_[hash % kPartCount]; }

    // The atom and its units lie in one block.
    static Atom* build(const BString& text, uint32_t hash) {
        const size_t bytes = static_cast<size_t>(text.length()) * sizeof(char16_t);
        void* block = _smalloc(sizeof(Atom) + bytes + sizeof(char16_t));
        if (block == nullptr) return nullptr;
        Atom* atom = new (block) Atom();
        char16_t* units = reinterpret_cast<char16_t*>(atom + 1);
        std::memcpy(units, text.data(), bytes);
        units[text.length()] = 0;
        atom->text_.data_ = units;
        atom->text_.length_ = text.length();
        atom->text_.capacity_ = BString::internedMark();
        atom->hash_ = hash;
        atom->holders_.store(1, std::memory_order_relaxed);
        return atom;
    }

    static void destroy(Atom* atom) {
        if (atom == nullptr) return;
        atom->~Atom();
        _sfree(atom);
    }

    // The table once it stands.
    static constinit NameTable* built;

    Part parts_[kPartCount];
};

constinit NameTable* NameTable::built = nullptr;

Name::Name(const BString& text) {
    const Atom* known = Atom::ofInternedText(text);
    if (known != nullptr) {
        atom_ = known;
        addHolder();
    } else {
        nameAtom(WellKnownName::empty);  // the engine's own names come first, or they would be counted
        atom_ = NameTable::instance().hold(text, true);
    }
}

Name Name::find(const BString& text) {
    Name name;
    name.atom_ = NameTable::instance().hold(text, false);
    return name;
}

void Name::dropCounted(const Atom* atom) {
    NameTable::instance().drop(atom);
}

const BString& Name::emptyText() {
    return nameText(WellKnownName::empty);
}

namespace {

constexpr const char16_t* kTexts[] = {
#define QUORVELIN_NAME(identifier, text) u"" text,
#define QUORVELIN_OVERLOAD(identifier, text) u"operator$" text,
    QUORVELIN_FIXED_NAMES(QUORVELIN_NAME) QUORVELIN_FURTHER_NAMES(QUORVELIN_NAME)
        QUORVELIN_OPERATOR_NAMES(QUORVELIN_NAME) QUORVELIN_OPERATOR_NAMES(QUORVELIN_OVERLOAD)
#undef QUORVELIN_NAME
#undef QUORVELIN_OVERLOAD
};

#define QUORVELIN_NAME(identifier, text) +1
static_assert(0 QUORVELIN_FIXED_NAMES(QUORVELIN_NAME) == kFixedNameCount);
#undef QUORVELIN_NAME

// A host may load and unload the library many times in one process. The priority puts this behind the
// destructors of all static objects of the library.
[[gnu::destructor(101)]] void freeTableAtUnload() {
    NameTable::freeAll();
}

// Builds the names when the library loads, before any of its operations can be called.
const bool kBuiltAtLoad = [] {
    detail::buildWellKnownAtoms();
    return true;
}();

}  // namespace

void detail::buildWellKnownAtoms() {
    static const bool built = [] {
        for (int32_t i = 0; i < static_cast<int32_t>(WellKnownName::count); ++i) {
            const Atom* atom = NameTable::instance().hold(BString(kTexts[i]), true);
            if (atom != nullptr) NameTable::makeWellKnown(const_cast<Atom*>(atom), i);
            wellKnownAtoms[i] = atom;
        }
        return true;
    }();
    (void)built;
    (void)kBuiltAtLoad;
}

}  // namespace quorvelin
