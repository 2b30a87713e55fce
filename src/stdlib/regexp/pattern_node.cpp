#include "stdlib/regexp/pattern_node.h"

#include <new>
#include <utility>

#include "host/allocator.h"

namespace quorvelin {

bool JSPatternNode::setMembers(const char16_t* members, int32_t count) {
    if (!text.assign(members, count)) return false;
    for (uint32_t& bits : latinMembers_) bits = 0;
    latinMembers_[0] = 1;
    for (int32_t i = 0; i < count && members[i] != 0; ++i) {
        const uint32_t code = members[i];
        if (code < 256) latinMembers_[code / 32] |= 1u << (code % 32);
    }
    return true;
}

bool JSPatternNode::hasMemberBeyondLatin(char16_t c) const {
    const char16_t* member = text.data();
    while (*member != 0 && *member != c) ++member;
    return *member != 0;
}

JSPatternNode* makePatternNode(JSPatternNodeKind kind, JSPatternNode* parent) {
    void* block = _smalloc(sizeof(JSPatternNode));
    if (block == nullptr) return nullptr;
    JSPatternNode* node = new (block) JSPatternNode(kind);
    node->parent = parent;
    return node;
}

bool linkNode(JSPatternNode* node) {
    JSPatternNode* parent = node->parent;
    if (parent == nullptr) return false;
    if (parent->next != nullptr) {
        node->body = parent->next;
        node->body->parent = node;
    }
    parent->next = node;
    return true;
}

void destroyNodes(JSPatternNode* node) {
    // The nodes still to be freed form a list through `parent`, which nobody reads any more.
    JSPatternNode* waiting = nullptr;
    const auto enqueue = [&waiting](JSPatternNode*& child) {
        if (child == nullptr) return;
        child->parent = waiting;
        waiting = std::exchange(child, nullptr);
    };
    enqueue(node->next);
    enqueue(node->body);
    node->text.clear();
    while (waiting != nullptr) {
        JSPatternNode* freed = waiting;
        waiting = freed->parent;
        enqueue(freed->next);
        enqueue(freed->body);
        freed->~JSPatternNode();
        _sfree(freed);
    }
}

void destroyPattern(JSPatternNode* node) {
    if (node == nullptr) return;
    destroyNodes(node);
    node->~JSPatternNode();
    _sfree(node);
}

}  // namespace quorvelin
