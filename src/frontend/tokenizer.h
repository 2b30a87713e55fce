// The tokenizer turns a stream of characters into tokens for the parser.
//
// Two decisions set it apart. It has no operator table: an operator token is the run of all consecutive
// operator characters, and the parser peels operators off the front of that run, editing the current token in
// place. And line ends separate statements only where the next line does not start with an operator-like
// character: a look-ahead on the level of characters removes the others, and that is all there is of
// semicolon insertion.
//
// `line` and `column` are those of the character taken last. Most tokens end by reading one character too
// many, so behind them the position is that of the character that follows the token.
#pragma once

#include <cstdint>

#include "foundation/bstring.h"
#include "foundation/stream.h"
#include "foundation/text_builder.h"
#include "frontend/token.h"

namespace quorvelin {

class JSTokenizer {
  public:
    // Reads nothing yet. The stream is borrowed and must outlive the tokenizer.
    explicit JSTokenizer(IBStream* stream) : stream_(stream) {}
    virtual ~JSTokenizer() = default;
    JSTokenizer(const JSTokenizer&) = delete;
    JSTokenizer& operator=(const JSTokenizer&) = delete;

    // JSTT_RESERVED for a reserved word, else JSTT_IDENFICATOR. A derived class can widen the list.
    virtual int32_t classifyWord(const BString& word) const;

    // Takes the next token into `text` and `kind`. With `skipLineEnds` line-end tokens are passed over; a
    // semicolon never is.
    int32_t nextToken(bool skipLineEnds);

    // A line that starts with this character goes on with the statement of the line before. Besides these a
    // "+" or
    // "-" does that unless it is doubled.
    static bool continuesStatement(char16_t c);

    const BString& text() const { return text_; }
    int32_t kind() const { return kind_; }
    int32_t line() const { return line_; }
    int32_t column() const { return column_; }

  protected:
    // What the scanner and the character source deliver at the end of the text.
    static constexpr char16_t kEndOfText = 0xFFFF;

    // The next character. A tab comes as a blank, a line end as a line feed, and unless `rawLineEnd` is set a
    // line end vanishes when the next line starts with a continuation character.
    char16_t readChar(bool rawLineEnd);

    // Puts the character just read back. Line and column change only at the next read.
    void unreadChar();

    // The current token is of this kind and has exactly this text.
    bool isToken(int32_t kind, const char16_t* text) const { return kind_ == kind && text_.equals(text); }
    bool isLineEnd() const { return kind_ == JSTT_OPERSEPARATOR && !text_.equals(u";"); }

    // Set once there was no memory for the text of a token. The text at hand is then not that of the token,
    // and nothing that was made of it may be used.
    bool memoryFailed_ = false;

    BString text_;
    int32_t kind_ = JSTT_NONE;

  private:
    struct CharacterRecord {
        char16_t character;
        int32_t line;
        int32_t column;
    };
    static constexpr uint32_t kRingSize = 8;

    char16_t fetch(bool rawLineEnd);
    char16_t lookBehindLineEnd();
    void finishLineEnd(char16_t first);
    void putRecord(char16_t character);

    int32_t scanToken();
    int32_t finish(int32_t kind);
    int32_t finishCharacter(int32_t kind, char16_t character);
    void setText(const char16_t* units, int32_t length);
    int32_t scanOperatorRun(char16_t first);
    int32_t scanString(char16_t quote);
    void scanHexadecimalEscape();
    void scanOctalEscape();
    int32_t scanZero();
    int32_t scanPoint();
    int32_t scanDecimal(bool pointSeen);
    int32_t scanWord(char16_t first);
    void readIdentifierTail(char16_t first);
    void skipLineComment();
    void skipBlockComment();

    char16_t current_ = 0;
    CharacterRecord ring_[kRingSize] = {};
    uint32_t readIndex_ = 0;
    uint32_t writeIndex_ = 0;
    int32_t column_ = 1;
    int32_t line_ = 1;
    IBStream* stream_;
    TextBuilder scanned_;
};

}  // namespace quorvelin
