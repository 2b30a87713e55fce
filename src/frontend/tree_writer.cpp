#include "frontend/tree_writer.h"

#include "frontend/nodes.h"
#include "frontend/tree_marks.h"
#include "frontend/tree_reader.h"

namespace quorvelin {

// One thing that is still to be written. `pointer` is what `kind` says.
struct SavedTree::Work {
    enum Kind { node, field, entries, variables, clauses };
    Kind kind;
    const void* pointer;
    const NodeField* fieldOf;  // for `field`: the field of the node to write
    uint8_t mark;              // the mark of a list
};

bool SavedTree::write(const JSNode* root) {
    size_ = 0;
    failed_ = false;
    writeByte(static_cast<uint8_t>(kSavedTreeMarker));
    push({Work::node, root, nullptr, 0});
    while (!failed_ && stackSize_ > 0) {
        const Work work = stack_[--stackSize_];
        perform(work);
    }
    stackSize_ = 0;
    return !failed_;
}

void SavedTree::push(const Work& work) {
    if (!stack_.growTo(stackSize_ + 1)) {
        failed_ = true;
        return;
    }
    stack_[stackSize_++] = work;
}

void SavedTree::perform(const Work& work) {
    switch (work.kind) {
        case Work::node:
            writeNode(static_cast<const JSNode*>(work.pointer));
            break;
        case Work::field:
            pushField(static_cast<const JSNode*>(work.pointer), *work.fieldOf, work.mark);
            break;
        case Work::entries: {
            const ListRecord* record = static_cast<const ListRecord*>(work.pointer);
            writeByte(record == nullptr ? listEnd(work.mark) : work.mark);
            if (record == nullptr) break;
            push({Work::entries, record->next, nullptr, work.mark});
            push({Work::node, record->value.get(), nullptr, 0});
            break;
        }
        case Work::variables: {
            const VariableRecord* record = static_cast<const VariableRecord*>(work.pointer);
            writeByte(record == nullptr ? listEnd(work.mark) : work.mark);
            if (record == nullptr) break;
            writeText(record->name.text());
            push({Work::variables, record->next, nullptr, work.mark});
            push({Work::node, record->initialiser.get(), nullptr, 0});
            break;
        }
        case Work::clauses: {
            const CaseRecord* record = static_cast<const CaseRecord*>(work.pointer);
            writeByte(record == nullptr ? listEnd(kClauseMark) : kClauseMark);
            if (record == nullptr) break;
            push({Work::clauses, record->next, nullptr, kClauseMark});
            push({Work::node, record->statements.get(), nullptr, 0});
            push({Work::node, record->test.get(), nullptr, 0});
            break;
        }
    }
}

void SavedTree::writeNode(const JSNode* node) {
    if (node == nullptr || node->shape().tag == 0) {
        writeByte(kAbsentChild);
        return;
    }
    const NodeShape& shape = node->shape();
    const uint8_t tag = static_cast<uint8_t>(shape.tag);
    writeByte(tag);
    for (int32_t i = kMostFields - 1; i >= 0; --i) {
        const int8_t index = shape.savedOrder[i];
        if (index >= 0) push({Work::field, node, &shape.fields[index], tag});
    }
}

void SavedTree::pushField(const JSNode* node, const NodeField& field, uint8_t tag) {
    switch (field.type) {
        case FieldType::node:
            writeNode((node->*field.node).get());
            break;
        case FieldType::name:
            writeText((node->*field.identifier).text());
            break;
        case FieldType::text:
            writeText(node->*field.text);
            break;
        case FieldType::number:
            writeWord(static_cast<uint32_t>(node->*field.number));
            break;
        case FieldType::entries:
            push({Work::entries, (node->*field.entries).first, nullptr, tag});
            break;
        case FieldType::variables:
            push({Work::variables, (node->*field.variables).first, nullptr, tag});
            break;
        case FieldType::parameters:
            for (const ParameterRecord* record = (node->*field.parameters).first; record != nullptr;
                 record = record->next) {
                writeByte(tag);
                writeText(record->name.text());
            }
            writeByte(listEnd(tag));
            break;
        case FieldType::clauses:
            push({Work::clauses, (node->*field.clauses).first, nullptr, kClauseMark});
            break;
    }
}

void SavedTree::writeByte(uint8_t byte) {
    if (!bytes_.growTo(size_ + 1)) {
        failed_ = true;
        return;
    }
    bytes_[size_++] = byte;
}

void SavedTree::writeWord(uint32_t word) {
    for (int32_t shift = 0; shift < 32; shift += 8) writeByte(static_cast<uint8_t>(word >> shift));
}

// The terminating zero is written and counted. The reader takes a text up to its first zero, and an empty
// text may as well have the count 0.
void SavedTree::writeText(const BString& text) {
    if (text.isEmpty()) {
        writeWord(0);
        return;
    }
    writeWord(static_cast<uint32_t>(text.length()) + 1);
    for (int32_t i = 0; i <= text.length(); ++i) {
        writeByte(static_cast<uint8_t>(text[i]));
        writeByte(static_cast<uint8_t>(text[i] >> 8));
    }
}

}  // namespace quorvelin
