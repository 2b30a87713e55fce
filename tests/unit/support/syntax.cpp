#include "support/syntax.h"

#include <string_view>

#include "foundation/stream.h"
#include "frontend/parser.h"
#include "frontend/token.h"
#include "frontend/tree_reader.h"
#include "frontend/tree_writer.h"
#include "support/script_text.h"

namespace quorvelin::support {

namespace {

std::string position(int32_t line, int32_t column) {
    return std::to_string(line) + ":" + std::to_string(column);
}

std::string kindName(int32_t kind) {
    return std::string(tokenKindName(kind)).substr(sizeof "JSTT_" - 1);
}

std::string tokenList(std::u16string_view script, bool skipLineEnds, bool positions) {
    const BString text = textOf(script);
    BStringInputStream stream(&text);
    JSTokenizer tokenizer(&stream);
    std::string list;
    for (;;) {
        const int32_t kind = tokenizer.nextToken(skipLineEnds);
        if (kind == JSTT_EOF && !positions) return list;
        if (!list.empty()) list += ", ";
        if (positions) list += position(tokenizer.line(), tokenizer.column()) + " ";
        list += kindName(kind);
        if (kind == JSTT_EOF) return list;
        const std::string tokenText = ascii(tokenizer.text());
        list += " " + (tokenText == "\n" ? std::string("\\n") : tokenText);
    }
}

class Outline {
  public:
    explicit Outline(bool positions) : positions_(positions) {}

    void write(const JSNode* node) {
        if (node == nullptr) {
            text += "-";
            return;
        }
        const NodeShape& shape = node->shape();
        std::string_view name(shape.className);
        name.remove_prefix(2);
        name.remove_suffix(4);
        text += std::string(name);
        if (positions_) text += "@" + position(node->line, node->column);
        text += "(";
        for (int32_t i = 0; i < shape.fieldCount; ++i) {
            if (i > 0) text += " ";
            writeField(node, shape.fields[i]);
        }
        text += ")";
    }

    std::string text;

  private:
    void writeField(const JSNode* node, const NodeField& field) {
        switch (field.type) {
            case FieldType::node:
                write((node->*field.node).get());
                break;
            case FieldType::name:
                text += ascii((node->*field.identifier).text());
                break;
            case FieldType::text:
                text += ascii(node->*field.text);
                break;
            case FieldType::number:
                text += std::to_string(node->*field.number);
                break;
            case FieldType::entries:
                writeRecords((node->*field.entries).first,
                             [this](const ListRecord& record) { write(record.value.get()); });
                break;
            case FieldType::variables:
                writeRecords((node->*field.variables).first, [this](const VariableRecord& record) {
                    text += ascii(record.name.text()) + "=";
                    write(record.initialiser.get());
                });
                break;
            case FieldType::parameters:
                writeRecords((node->*field.parameters).first,
                             [this](const ParameterRecord& record) { text += ascii(record.name.text()); });
                break;
            case FieldType::clauses:
                writeRecords((node->*field.clauses).first, [this](const CaseRecord& record) {
                    write(record.test.get());
                    text += ":";
                    write(record.statements.get());
                });
                break;
        }
    }

    template <typename Record, typename WriteRecord>
    void writeRecords(const Record* first, WriteRecord writeRecord) {
        text += "[";
        for (const Record* record = first; record != nullptr; record = record->next) {
            if (record != first) text += " ";
            writeRecord(*record);
        }
        text += "]";
    }

    bool positions_;
};

}  // namespace

std::string tokens(std::u16string_view script, bool skipLineEnds) {
    return tokenList(script, skipLineEnds, false);
}

std::string tokensWithPositions(std::u16string_view script, bool skipLineEnds) {
    return tokenList(script, skipLineEnds, true);
}

Owned<JSNode> parse(std::u16string_view script) {
    return parseText(textOf(script));
}

Owned<JSNode> parseText(const BString& script) {
    BStringInputStream stream(&script);
    JSParser parser(&stream);
    return Owned<JSNode>(parser.parseProgram());
}

const JSNode* firstStatement(const JSNode* root) {
    if (root == nullptr || root->kind != kStatementListKind) return nullptr;
    const ListRecord* list = static_cast<const JSStatementListNode*>(root)->entries.first;
    if (list == nullptr || !list->value || list->value->kind != kStatementListKind) return nullptr;
    return static_cast<const JSStatementListNode&>(*list->value).entries.first->value.get();
}

std::string regenerated(std::u16string_view script) {
    const Owned<JSNode> root = parse(script);
    return ascii(root->regenerate());
}

std::string statement(std::u16string_view script) {
    const Owned<JSNode> root = parse(script);
    if (root->kind == kErrorKind) return ascii(root->regenerate());
    JSNode* first = const_cast<JSNode*>(firstStatement(root.get()));
    return first == nullptr ? "no statement" : ascii(first->regenerate());
}

std::string outline(const JSNode* node, bool positions) {
    Outline writer(positions);
    writer.write(node);
    return writer.text;
}

std::string outlineOf(std::u16string_view script, bool positions) {
    const Owned<JSNode> root = parse(script);
    if (root->kind == kErrorKind) return ascii(root->regenerate());
    return outline(firstStatement(root.get()), positions);
}

std::string syntaxError(std::u16string_view script) {
    const Owned<JSNode> root = parse(script);
    return root->kind == kErrorKind ? ascii(static_cast<JSErrorNode&>(*root).message) : "";
}

std::vector<uint8_t> saved(const JSNode* root) {
    SavedTree tree;
    if (!tree.write(root)) return {};
    return std::vector<uint8_t>(tree.bytes(), tree.bytes() + tree.size());
}

Owned<JSNode> loaded(const std::vector<uint8_t>& bytes) {
    const BString text = textOf(std::u16string(bytes.begin(), bytes.end()));
    BStringInputStream stream(&text);
    if (stream.readChar() != kSavedTreeMarker) return Owned<JSNode>();
    return Owned<JSNode>(readNode(&stream));
}

}  // namespace quorvelin::support
