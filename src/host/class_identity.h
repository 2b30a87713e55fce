// Class identity, as both sides of the module boundary speak it: the identifier of a class (`BGuid`), the
// identity record of a class (`stype_info`) and the visitor that follows a query through the bases of an
// object. The records themselves are declared by the classes they belong to.
#pragma once

#include <cstdint>
#include <string_view>

namespace quorvelin {

/// Identifier of a class or interface: four 32-bit words in a fixed order. The default is all zero.
struct BGuid {
    std::uint32_t words[4] = {0, 0, 0, 0};

    constexpr BGuid() = default;
    constexpr BGuid(std::uint32_t word1, std::uint32_t word2, std::uint32_t word3, std::uint32_t word4)
        : words{word1, word2, word3, word4} {}

    constexpr void set(std::uint32_t word1, std::uint32_t word2, std::uint32_t word3, std::uint32_t word4) {
        *this = BGuid(word1, word2, word3, word4);
    }

    /// Reads 16 pairs of hexadecimal digits from the start of `text` into the 16 bytes of the identifier, in
    /// the order in which they lie in memory. False, and nothing changed, for a text of fewer than 32
    /// characters. No character is refused: what is neither a digit nor one of a to f counts as an upper-case
    /// letter.
    bool parse(std::u16string_view text);

    /// The words are compared in order.
    friend constexpr bool operator==(const BGuid& left, const BGuid& right) {
        return left.words[0] == right.words[0] && left.words[1] == right.words[1] &&
               left.words[2] == right.words[2] && left.words[3] == right.words[3];
    }

    constexpr std::uint32_t hash() const { return words[0]; }
};

struct stype_info;

/// Is told of each class that a query tries. After a successful query it has been entered, and not left, for
/// every class on the path from the object's own class to the one found.
struct IBQueryVisitor {
    /// `face` is the face of the object that belongs to the class. Both are borrowed.
    virtual void enter(const stype_info& identity, void* face) = 0;
    /// The class entered last and all its bases have failed.
    virtual void leave() = 0;

  protected:
    ~IBQueryVisitor() = default;
};

/// Identity record of a class or interface: one static object for each, never freed. The constructor is a
/// constant expression, so that a record can stand before any code runs and whichever unit asks first.
struct stype_info {
    BGuid guid;
    /// The identifier as text, 47 characters and a NUL.
    char text[48] = {};

    constexpr stype_info(std::uint32_t word1, std::uint32_t word2, std::uint32_t word3, std::uint32_t word4)
        : guid(word1, word2, word3, word4) {
        buildText();
    }
    stype_info(const stype_info&) = delete;
    stype_info& operator=(const stype_info&) = delete;

    /// The class name, for example "IBQuery".
    virtual const char* name() const = 0;
    /// The class name in wide characters.
    virtual const char16_t* wideName() const = 0;
    /// Asks `object`, which must be of the kind that this record's class expects, for the face of this
    /// identity. Null for a null object and when the object does not answer; no reference is added. `visitor`
    /// may be null.
    virtual void* queryOn(void* object, IBQueryVisitor* visitor) const = 0;

  protected:
    ~stype_info() = default;

  private:
    // Lays the digits of each word over the zeros of a template, so that the last digit falls on the last
    // zero of the word's group and the zeros before it stay as padding.
    constexpr void buildText() {
        constexpr char pattern[48] = "0x00000000, 0x00000000, 0x00000000, 0x00000000 ";
        constexpr int groupWidth = 12;
        constexpr int lastDigit = 9;
        for (int i = 0; i < 48; ++i) {
            text[i] = pattern[i];
        }
        for (int group = 0; group < 4; ++group) {
            char* place = text + group * groupWidth + lastDigit;
            for (std::uint32_t rest = guid.words[group]; rest != 0; rest >>= 4) {
                *place-- = "0123456789ABCDEF"[rest & 15];
            }
        }
    }
};

}  // namespace quorvelin
