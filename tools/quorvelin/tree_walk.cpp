#include "quorvelin/tree_walk.h"

#include <vector>

namespace quorvelin::tool {

namespace {

// One thing that is still to be done. `pointer` is what `kind` says.
struct Step {
    enum Kind { node, endNode, beginList, entries, variables, clauses, endList, endRecord };
    Kind kind;
    const char* role = nullptr;
    const void* pointer = nullptr;
};

class Walk {
  public:
    explicit Walk(TreeVisitor& visitor) : visitor_(visitor) {}

    void over(const JSNode* root) {
        push({Step::node, nullptr, root});
        while (!steps_.empty() && visitor_.wantsMore()) {
            const Step step = steps_.back();
            steps_.pop_back();
            perform(step);
        }
    }

  private:
    void push(const Step& step) { steps_.push_back(step); }

    void perform(const Step& step) {
        switch (step.kind) {
            case Step::node:
                visit(step.role, static_cast<const JSNode*>(step.pointer));
                break;
            case Step::endNode:
                visitor_.endNode();
                break;
            case Step::beginList:
                visitor_.beginList(step.role, step.pointer == nullptr);
                break;
            case Step::entries:
                visitEntry(static_cast<const ListRecord*>(step.pointer));
                break;
            case Step::variables:
                visitVariable(static_cast<const VariableRecord*>(step.pointer));
                break;
            case Step::clauses:
                visitClause(static_cast<const CaseRecord*>(step.pointer));
                break;
            case Step::endList:
                visitor_.endList();
                break;
            case Step::endRecord:
                visitor_.endRecord();
                break;
        }
    }

    void visit(const char* role, const JSNode* node) {
        if (node == nullptr) {
            visitor_.absentNode(role);
            return;
        }
        visitor_.beginNode(role, *node);
        push({Step::endNode});
        const NodeShape& shape = node->shape();
        for (int32_t i = shape.fieldCount - 1; i >= 0; --i) pushField(*node, shape.fields[i]);
    }

    void pushField(const JSNode& node, const NodeField& field) {
        switch (field.type) {
            case FieldType::node:
                push({Step::node, field.name, (node.*field.node).get()});
                break;
            case FieldType::entries:
                pushList(Step::entries, field.name, (node.*field.entries).first);
                break;
            case FieldType::variables:
                pushList(Step::variables, field.name, (node.*field.variables).first);
                break;
            case FieldType::clauses:
                pushList(Step::clauses, field.name, (node.*field.clauses).first);
                break;
            case FieldType::name:
            case FieldType::text:
            case FieldType::number:
            case FieldType::parameters:
                break;
        }
    }

    void pushList(Step::Kind kind, const char* role, const void* first) {
        push({Step::endList});
        push({kind, nullptr, first});
        push({Step::beginList, role, first});
    }

    void visitEntry(const ListRecord* record) {
        if (record == nullptr) return;
        push({Step::entries, nullptr, record->next});
        push({Step::node, nullptr, record->value.get()});
    }

    void visitVariable(const VariableRecord* record) {
        if (record == nullptr) return;
        visitor_.beginRecord(&record->name);
        push({Step::variables, nullptr, record->next});
        push({Step::endRecord});
        push({Step::node, "initialiser", record->initialiser.get()});
    }

    void visitClause(const CaseRecord* record) {
        if (record == nullptr) return;
        visitor_.beginRecord(nullptr);
        push({Step::clauses, nullptr, record->next});
        push({Step::endRecord});
        push({Step::node, "statements", record->statements.get()});
        push({Step::node, "test", record->test.get()});
    }

    TreeVisitor& visitor_;
    std::vector<Step> steps_;
};

}  // namespace

void walkTree(const JSNode* root, TreeVisitor& visitor) {
    Walk(visitor).over(root);
}

}  // namespace quorvelin::tool
