// JSNode, the base of all nodes of the syntax tree.
//
// The parser builds nodes, the evaluator runs them, and there is no other form of a program. A node can write
// itself back as source text, run itself in a context, check itself before a run (which is also when names
// are declared) and fill itself from a stream. What a class looks like - its fields, its numbers, its place
// in saved trees, its source text - stands in one table of shapes (`NodeShape`, node_shapes.cpp), and
// everything that only has to walk the fields - regenerating, loading, saving, showing - is written once,
// over that table.
//
// A node owns its children: the parser hands its references over. Trees do not change once they are built.
#pragma once

#include <cstdint>

#include "foundation/bstring.h"
#include "foundation/name.h"
#include "foundation/owned.h"
#include "foundation/smart_object.h"
#include "host/allocator.h"

namespace quorvelin {

class IBStream;
class JSContext;
class JSNode;
class JSObject;
class JSProperty;
struct NodeShape;

// The kind of a node: what the parser and the run see. Several classes share a kind.
enum NodeKind : int32_t {
    kMemberCallKind = 1,
    kMemberKind = 2,
    kIdentifierKind = 4,
    kCallKind = 5,
    kIndexKind = 6,
    kCommaKind = 7,
    kBinaryKind = 8,
    kConditionalKind = 9,
    kUnaryKind = 10,
    kPostfixKind = 11,
    kLiteralKind = 12,
    kFunctionKind = 13,
    kForInKind = 14,
    kForKind = 15,
    kIfKind = 16,
    kBreakKind = 17,
    kContinueKind = 18,
    kDoKind = 19,
    kReturnKind = 20,
    kSwitchKind = 21,
    kWithKind = 22,
    kWhileKind = 23,
    kStatementListKind = 24,
    kVarKind = 25,  // also the kind of a parameter list
    kArgumentsKind = 26,
    kLabelKind = 27,
    kRegExpKind = 28,
    kArrayKind = 29,
    kErrorKind = 30,
};

// What a peek found: a finite number or a truth value.
struct PeekedValue {
    bool isNumber;
    double number;
    bool truth;
};

class JSNode : public BSmartObject {
  public:
    // The node as source text in the house style: a fresh text, which depends on nothing but the node.
    // Changes nothing and takes any depth. Without memory the text is empty.
    virtual BString regenerate();

    // Runs the node; called through the context's `execute` only, which sets the position first. The result
    // carries a reference for the caller and may be null.
    virtual JSObject* run(JSContext* context, JSObject* receiver) = 0;

    // The walk before a run: declares names, reports syntax errors. False refuses the run.
    virtual bool check(JSContext* context) = 0;

    // Fills the fields from a saved tree. Never fails: what is missing in the stream stays empty.
    virtual void load(IBStream* stream);

    // The class's name, numbers and fields.
    virtual const NodeShape& shape() const = 0;

    // Reads what the node would evaluate to, where that is a number or a truth value that can be had by
    // looking at cells alone: nothing is made, changed, asked of a host's object or run. False when it takes
    // a run to know. A peek that succeeds stands for the run, of which nobody could tell the difference.
    virtual bool peek(JSContext* context, PeekedValue& out);

    // The cell that the node refers to, under the same conditions; borrowed, null when it takes a run to
    // know.
    virtual JSProperty* peekCell(JSContext* context);

    int32_t kind;
    int32_t line;
    int32_t column;

  protected:
    explicit JSNode(int32_t nodeKind, int32_t nodeLine = 0, int32_t nodeColumn = 0)
        : kind(nodeKind), line(nodeLine), column(nodeColumn) {}
};

// ---- Records of the nodes that hold lists ----

// Records come from the host's allocator; `new` gives null when memory fails.
struct HostAllocated {
    static void* operator new(size_t size) noexcept { return _smalloc(size); }
    static void operator delete(void* block) noexcept { _sfree(block); }
};

// An entry of a list of statements, arguments or elements. Entries of loaded trees may have no value.
struct ListRecord : HostAllocated {
    Owned<JSNode> value;
    ListRecord* next = nullptr;
};

// A name of a `var` statement with its initialiser, which may be absent.
struct VariableRecord : HostAllocated {
    Name name;
    Owned<JSNode> initialiser;
    VariableRecord* next = nullptr;
};

struct ParameterRecord : HostAllocated {
    Name name;
    ParameterRecord* next = nullptr;
};

// A clause of a `switch`. No test marks the default clause. The position is always 0.
struct CaseRecord : HostAllocated {
    Owned<JSNode> test;
    Owned<JSNode> statements;
    CaseRecord* next = nullptr;
    int32_t line = 0;
    int32_t column = 0;
};

// A singly linked list that owns its records and what they hold.
template <typename Record>
struct RecordList {
    Record* first = nullptr;
    Record* last = nullptr;

    RecordList() = default;
    RecordList(const RecordList&) = delete;
    RecordList& operator=(const RecordList&) = delete;
    ~RecordList() {
        while (first != nullptr) {
            Record* next = first->next;
            delete first;
            first = next;
        }
    }

    bool isEmpty() const { return first == nullptr; }

    // A fresh record at the end, or null without memory.
    Record* append() {
        Record* record = new Record();
        if (record == nullptr) return nullptr;
        (last != nullptr ? last->next : first) = record;
        last = record;
        return record;
    }
};

// ---- Shapes ----

enum class FieldType : uint8_t { node, name, text, number, entries, variables, parameters, clauses };

// One field of a node class, in order of declaration.
struct NodeField {
    const char* name;
    FieldType type;
    Owned<JSNode> JSNode::*node = nullptr;
    Name JSNode::*identifier = nullptr;
    BString JSNode::*text = nullptr;
    int32_t JSNode::*number = nullptr;
    RecordList<ListRecord> JSNode::*entries = nullptr;
    RecordList<VariableRecord> JSNode::*variables = nullptr;
    RecordList<ParameterRecord> JSNode::*parameters = nullptr;
    RecordList<CaseRecord> JSNode::*clauses = nullptr;
};

inline constexpr int32_t kMostFields = 4;

struct NodeShape {
    const char* className;
    int32_t kind;
    int32_t tag;  // the number in saved trees; 0 for a class that cannot be saved

    // How the node is written as source text: literal text with %0 to %3 for the fields in order of
    // declaration. %N writes "(none)" for an absent child, ?N writes nothing for it, and <N...> is written
    // only when child N is present. Null: the class writes its lists by rules of its own.
    const char16_t* source;

    int32_t fieldCount;
    NodeField fields[kMostFields];

    // The order of the fields in a saved tree, as indexes of `fields`; -1 ends it early.
    int8_t savedOrder[kMostFields];

    // A fresh node of the class with empty fields, or null without memory. Null for a class without a tag.
    JSNode* (*make)();
};

// The shape with a tag of saved trees, or null: no such class.
const NodeShape* shapeOfTag(int32_t tag);

}  // namespace quorvelin
