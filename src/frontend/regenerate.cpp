// Trees back to source text.
//
// The text is rebuilt in a fixed house style whose exact bytes scripts can see, since `decompile` hands them
// out. Most classes are written by the template in their shape; the ones that hold lists have rules of their
// own. The work that is left stands on a stack of its own, not on the native one, so that a tree of any depth
// can be written.
#include <iterator>

#include "foundation/heap_block.h"
#include "foundation/text_builder.h"
#include "foundation/well_known_names.h"
#include "frontend/nodes.h"
#include "frontend/token.h"

namespace quorvelin {

namespace {

class SourceWriter {
  public:
    BString write(const JSNode* root) {
        push(Work::child(root));
        while (!failed_ && count_ > 0) {
            const Work work = stack_[--count_];
            perform(work);
        }
        // A part of the text could be taken for another script.
        return failed_ || text_.failed() ? BString() : text_.text();
    }

  private:
    // One thing that is still to be written. `pointer` is what `kind` says.
    struct Work {
        enum Kind { literal, node, sourceTemplate, statements, values, variables, parameters, clauses };
        Kind kind;
        const void* pointer;
        const char16_t* rest;  // of a template

        static Work of(Kind kind, const void* pointer) { return {kind, pointer, nullptr}; }
        static Work child(const JSNode* node) { return of(Kind::node, node); }
        static Work text(const char16_t* text) { return of(Kind::literal, text); }
    };

    void push(const Work& work) {
        if (!stack_.growTo(count_ + 1)) {
            failed_ = true;
            return;
        }
        stack_[count_++] = work;
    }

    // What is pushed is written in the order of the list.
    template <size_t size>
    void pushAll(const Work (&works)[size]) {
        for (size_t i = size; i > 0; --i) push(works[i - 1]);
    }

    void perform(const Work& work) {
        switch (work.kind) {
            case Work::literal:
                text_.append(static_cast<const char16_t*>(work.pointer));
                break;
            case Work::node:
                writeNode(static_cast<const JSNode*>(work.pointer));
                break;
            case Work::sourceTemplate:
                writeTemplate(static_cast<const JSNode*>(work.pointer), work.rest);
                break;
            case Work::statements:
                writeStatements(static_cast<const ListRecord*>(work.pointer));
                break;
            case Work::values:
                writeValues(static_cast<const ListRecord*>(work.pointer));
                break;
            case Work::variables:
                writeVariables(static_cast<const VariableRecord*>(work.pointer));
                break;
            case Work::parameters:
                writeParameters(static_cast<const ParameterRecord*>(work.pointer));
                break;
            case Work::clauses:
                writeClauses(static_cast<const CaseRecord*>(work.pointer));
                break;
        }
    }

    void writeNode(const JSNode* node) {
        if (node == nullptr) {
            text_.append(nameText(WellKnownName::none));
            return;
        }
        const NodeShape& shape = node->shape();
        if (shape.source != nullptr) {
            writeTemplate(node, shape.source);
            return;
        }
        if (node->kind == kLiteralKind) {
            writeLiteral(*static_cast<const JSLiteralNode*>(node));
            return;
        }
        for (int32_t i = shape.fieldCount - 1; i >= 0; --i) pushListField(node, shape.fields[i]);
    }

    void pushListField(const JSNode* node, const NodeField& field) {
        switch (field.type) {
            case FieldType::entries: {
                const ListRecord* first = (node->*field.entries).first;
                push(Work::of(node->kind == kStatementListKind ? Work::statements : Work::values, first));
                break;
            }
            case FieldType::variables:
                pushAll({Work::text(u"var "), Work::of(Work::variables, (node->*field.variables).first)});
                break;
            case FieldType::parameters:
                push(Work::of(Work::parameters, (node->*field.parameters).first));
                break;
            case FieldType::clauses:
                pushAll({Work::text(u")\n{\n"), Work::of(Work::clauses, (node->*field.clauses).first),
                         Work::text(u"}\n")});
                break;
            case FieldType::node:  // the subject of a switch
                pushAll({Work::text(u"switch("), Work::child((node->*field.node).get())});
                break;
            default:
                break;
        }
    }

    void writeTemplate(const JSNode* node, const char16_t* rest) {
        const NodeShape& shape = node->shape();
        for (; *rest != 0; ++rest) {
            if (*rest == u'>') continue;  // the end of a part that was written
            if (*rest == u'<') {
                ++rest;
                if (childOf(node, shape, *rest) == nullptr) {
                    while (*rest != u'>') ++rest;
                }
                continue;
            }
            const bool optional = *rest == u'?' && isFieldDigit(rest[1]);
            if (*rest != u'%' && !optional) {
                text_.append(*rest);
                continue;
            }
            const NodeField& field = shape.fields[*++rest - u'0'];
            if (field.type == FieldType::name) {
                text_.append((node->*field.identifier).text());
            } else if (field.type == FieldType::text) {
                text_.append(node->*field.text);
            } else {
                const JSNode* child = (node->*field.node).get();
                if (child == nullptr && optional) continue;
                push({Work::sourceTemplate, node, rest + 1});
                push(Work::child(child));
                return;
            }
        }
    }

    static bool isFieldDigit(char16_t c) { return c >= u'0' && c < u'0' + kMostFields; }

    static const JSNode* childOf(const JSNode* node, const NodeShape& shape, char16_t digit) {
        return (node->*shape.fields[digit - u'0'].node).get();
    }

    void writeLiteral(const JSLiteralNode& literal) {
        switch (literal.tokenKind) {
            case JSTT_CHAR:
            case JSTT_STRING:
                // Quirk: nothing is escaped, so a string that holds a quote or a line feed does not read
                // back.
                text_.append(u'"');
                text_.append(literal.text);
                text_.append(u'"');
                break;
            case JSTT_INT:
            case JSTT_FLOAT:
            case JSTT_HEXINT:
            case JSTT_OCTALINT:
            case JSTT_BOOL:
                text_.append(literal.text);
                break;
            case JSTT_ZERO:
                text_.append(u'0');
                break;
            case JSTT_NULL:
                text_.append(nameText(WellKnownName::nullWord));
                break;
            default:
                text_.append(u"???");
                break;
        }
    }

    void writeStatements(const ListRecord* record) {
        if (record == nullptr) return;
        pushAll(
            {Work::child(record->value.get()), Work::text(u";\n"), Work::of(Work::statements, record->next)});
    }

    // Quirk: an array literal gets no brackets, and a comma stands behind an entry without a value as well.
    void writeValues(const ListRecord* record) {
        if (record == nullptr) return;
        push(Work::of(Work::values, record->next));
        if (record->next != nullptr) push(Work::text(u","));
        if (record->value) push(Work::child(record->value.get()));
    }

    void writeVariables(const VariableRecord* record) {
        if (record == nullptr) return;
        text_.append(record->name.text());
        push(Work::of(Work::variables, record->next));
        if (record->next != nullptr) push(Work::text(u","));
        if (record->initialiser) pushAll({Work::text(u"="), Work::child(record->initialiser.get())});
    }

    void writeParameters(const ParameterRecord* record) {
        for (; record != nullptr; record = record->next) {
            text_.append(record->name.text());
            if (record->next != nullptr) text_.append(u',');
        }
    }

    void writeClauses(const CaseRecord* record) {
        if (record == nullptr) return;
        const Work test = record->test ? Work::child(record->test.get()) : Work::text(u"(default)");
        pushAll({Work::text(u"\ncase ("), test, Work::text(u"):\n"), Work::child(record->statements.get()),
                 Work::text(u"\n"), Work::of(Work::clauses, record->next)});
    }

    TextBuilder text_;
    HeapBlock<Work> stack_;
    size_t count_ = 0;
    bool failed_ = false;
};

}  // namespace

BString JSNode::regenerate() {
    SourceWriter writer;
    return writer.write(this);
}

}  // namespace quorvelin
