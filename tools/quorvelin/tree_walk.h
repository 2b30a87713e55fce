// A walk over a tree for whoever shows or searches it. The work that is left stands on a stack of its own, so
// that a tree of any depth can be walked.
#pragma once

#include "frontend/node.h"

namespace quorvelin::tool {

// Hears of the parts of a tree in order. `role` is the name of the field that holds the part, null where a
// list holds it or nothing does. Fields that are texts, names or numbers are the visitor's own matter: it
// finds them in the node's shape, lists of parameters included.
class TreeVisitor {
  public:
    virtual ~TreeVisitor() = default;

    virtual void beginNode(const char* role, const JSNode& node) = 0;
    virtual void endNode() {}
    virtual void absentNode(const char* /*role*/) {}
    virtual void beginList(const char* /*role*/, bool /*isEmpty*/) {}
    virtual void endList() {}
    // A variable of a `var` statement, or a clause of a `switch`, for which the name is null.
    virtual void beginRecord(const Name* /*name*/) {}
    virtual void endRecord() {}

    // False ends the walk, without the remaining ends.
    virtual bool wantsMore() const { return true; }
};

// Walks over a tree; a null root is an absent node.
void walkTree(const JSNode* root, TreeVisitor& visitor);

}  // namespace quorvelin::tool
