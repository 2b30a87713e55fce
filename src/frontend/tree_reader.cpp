#include "frontend/tree_reader.h"

#include "foundation/native_stack_guard.h"
#include "foundation/stream.h"
#include "foundation/text_builder.h"
#include "frontend/nodes.h"
#include "frontend/tree_marks.h"

namespace quorvelin {

namespace {

// What is being read on this thread. The operations in between know nothing but the stream, and a node for
// which memory failed must not end up in a tree that is missing it.
struct Reading {
    int32_t depth = 0;
    bool memoryFailed = false;
};
thread_local Reading reading;

// The next byte; false at the end of the stream.
bool readByte(IBStream* stream, uint8_t* byte) {
    return stream->read(byte, 1) == 1;
}

uint32_t readWord(IBStream* stream) {
    uint8_t bytes[4] = {0, 0, 0, 0};
    stream->read(bytes, 4);
    return static_cast<uint32_t>(bytes[0]) | static_cast<uint32_t>(bytes[1]) << 8 |
           static_cast<uint32_t>(bytes[2]) << 16 | static_cast<uint32_t>(bytes[3]) << 24;
}

Owned<JSNode> readChild(IBStream* stream) {
    return Owned<JSNode>(readNode(stream));
}

Name readName(IBStream* stream) {
    Name name(readText(stream));
    if (name.atom() == nullptr) reading.memoryFailed = true;
    return name;
}

// Reads records for as long as the list's mark stands in front of them. Any other byte ends the list.
template <typename Record, typename ReadRecord>
void readRecords(IBStream* stream, int32_t mark, RecordList<Record>& list, ReadRecord readRecord) {
    uint8_t byte = 0;
    while (readByte(stream, &byte) && byte == mark) {
        Record* record = list.append();
        if (record == nullptr) {
            reading.memoryFailed = true;
            return;
        }
        readRecord(*record);
    }
}

void loadField(JSNode* node, const NodeField& field, int32_t tag, IBStream* stream) {
    switch (field.type) {
        case FieldType::node:
            node->*field.node = readChild(stream);
            break;
        case FieldType::name:
            node->*field.identifier = readName(stream);
            break;
        case FieldType::text:
            node->*field.text = readText(stream);
            break;
        case FieldType::number:
            node->*field.number = static_cast<int32_t>(readWord(stream));
            break;
        case FieldType::entries:
            readRecords(stream, tag, node->*field.entries,
                        [stream](ListRecord& record) { record.value = readChild(stream); });
            break;
        case FieldType::variables:
            readRecords(stream, tag, node->*field.variables, [stream](VariableRecord& record) {
                record.name = readName(stream);
                record.initialiser = readChild(stream);
            });
            break;
        case FieldType::parameters:
            readRecords(stream, tag, node->*field.parameters,
                        [stream](ParameterRecord& record) { record.name = readName(stream); });
            break;
        case FieldType::clauses:
            readRecords(stream, kClauseMark, node->*field.clauses, [stream](CaseRecord& record) {
                record.test = readChild(stream);
                record.statements = readChild(stream);
            });
            break;
    }
}

}  // namespace

void JSNode::load(IBStream* stream) {
    const NodeShape& shapeOfThis = shape();
    for (const int8_t index : shapeOfThis.savedOrder) {
        if (index < 0) break;
        loadField(this, shapeOfThis.fields[index], shapeOfThis.tag, stream);
    }
}

JSNode* readNode(IBStream* stream) {
    uint8_t tag = 0;
    if (!readByte(stream, &tag)) return nullptr;
    const NodeShape* shape = shapeOfTag(tag);
    if (shape == nullptr) return nullptr;
    if (reading.depth == 0) reading.memoryFailed = false;
    const bool tooDeep = nativeStackIsShort();
    Owned<JSNode> node(tooDeep ? new JSErrorNode(0, 0, u"too deep") : shape->make());
    if (!node) {
        reading.memoryFailed = true;
    } else if (!tooDeep) {
        ++reading.depth;
        node->load(stream);
        --reading.depth;
    }
    if (reading.depth == 0 && reading.memoryFailed) node.reset();
    return node.take();
}

BString readText(IBStream* stream) {
    const uint32_t count = readWord(stream);
    // The text grows with what the stream delivers, not with what the count claims.
    TextBuilder text;
    bool ended = false;
    for (uint32_t i = 0; i < count; ++i) {
        uint8_t bytes[2] = {0, 0};
        if (stream->read(bytes, 2) < 2) break;
        const char16_t unit = static_cast<char16_t>(bytes[0] | bytes[1] << 8);
        if (unit == 0) ended = true;  // what stands behind it is read and dropped
        if (!ended) text.append(unit);
    }
    BString result = text.text();
    if (text.failed() || result.length() != text.length()) reading.memoryFailed = true;
    return result;
}

}  // namespace quorvelin
