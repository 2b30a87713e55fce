// Saved trees: writing a tree in the form that the reader takes.
#pragma once

#include <cstdint>

#include "foundation/heap_block.h"
#include "frontend/node.h"

namespace quorvelin {

// The bytes of a saved tree, marker included. A byte is one character of the stream that is read back.
class SavedTree {
  public:
    // Writes `root`, which may be null. False without memory; the bytes are then of no use. Positions are not
    // saved, neither is the statement of a label, and an error node becomes an absent child. Takes any depth.
    bool write(const JSNode* root);

    const uint8_t* bytes() const { return bytes_.data(); }
    size_t size() const { return size_; }

  private:
    struct Work;

    void perform(const Work& work);
    void push(const Work& work);
    void pushField(const JSNode* node, const NodeField& field, uint8_t tag);
    void writeNode(const JSNode* node);
    void writeByte(uint8_t byte);
    void writeWord(uint32_t word);
    void writeText(const BString& text);

    HeapBlock<uint8_t> bytes_;
    size_t size_ = 0;
    HeapBlock<Work> stack_;
    size_t stackSize_ = 0;
    bool failed_ = false;
};

}  // namespace quorvelin
