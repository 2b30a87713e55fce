#include "foundation/stream.h"

namespace quorvelin {

uint32_t BInputStream::read(uint8_t* buffer, uint32_t n) {
    if (!isOpen()) return 0;
    if (buffer == nullptr) return skip(n);
    uint32_t count = 0;
    while (count < n) {
        const char16_t character = readChar();
        if (character == kEndOfStream) break;
        buffer[count++] = static_cast<uint8_t>(character);
    }
    return count;
}

uint32_t BInputStream::percentDone() const {
    const uint32_t whole = size();
    if (whole == 0) return 100;
    return static_cast<uint32_t>(uint64_t{position()} * 100 / whole);
}

void BInputStream::unreadChar(char16_t character) {
    unread_ = character;
    hasUnread_ = true;
}

bool BInputStream::takeUnread(char16_t* character) {
    if (!hasUnread_) return false;
    hasUnread_ = false;
    *character = unread_;
    return true;
}

uint32_t BInputStream::skip(uint32_t n) {
    uint32_t count = 0;
    while (count < n && readChar() != kEndOfStream) ++count;
    return count;
}

const stype_info& BRAInputStream::getClassId() const {
    return identityOf(ClassId::BRAInputStream);
}

void* BRAInputStream::query(const stype_info& id, IBQueryVisitor* visitor) {
    // Quirk: the face for random access is tried in front of the bases of BInputStream, not behind them.
    IBRAStream* randomAccess = this;
    BInputStream* input = this;
    const QueryStep steps[] = {
        {ClassId::BRAInputStream, this, 0},
        {ClassId::BInputStream, input, 1},
        {ClassId::IBRAStream, randomAccess, 2},
        {ClassId::IBTransportable, static_cast<IBTransportable*>(randomAccess), 3},
        {ClassId::BStream, static_cast<BStream*>(input), 2},
        {ClassId::IBStream, static_cast<IBStream*>(input), 3},
        {ClassId::IBRemoteRemovable, static_cast<IBRemoteRemovable*>(input), 4},
        {ClassId::IBTransportable, static_cast<IBTransportable*>(input), 5},
        {ClassId::BNotifySender, static_cast<BNotifySender*>(input), 5},
    };
    return walkQuery(steps, static_cast<int32_t>(sizeof steps / sizeof steps[0]), id, visitor);
}

BStringInputStream::BStringInputStream(const BString* source) : source_(source) {
    if (source == nullptr) {
        setOpen(false);
        return;
    }
    rewind();
}

bool BStringInputStream::rewind() {
    position_ = 0;
    return true;
}

char16_t BStringInputStream::readChar() {
    if (atEnd()) return kEndOfStream;
    return (*source_)[static_cast<int32_t>(position_++)];
}

uint32_t BStringInputStream::size() const {
    return isOpen() ? static_cast<uint32_t>(source_->length()) : 0;
}

void BStringInputStream::unreadChar(char16_t character) {
    if (character < kEndOfStream && position_ != 0) --position_;
}

bool BStringInputStream::atEnd() const {
    return !isOpen() || position_ >= static_cast<uint32_t>(source_->length());
}

uint32_t BStringInputStream::skip(uint32_t n) {
    if (!isOpen()) return 0;
    const uint32_t rest = size() - position_;
    const uint32_t distance = n < rest ? n : rest;
    position_ += distance;
    return distance;
}

bool BStringInputStream::seek(uint32_t position) {
    if (!isOpen() || position > size()) return false;
    position_ = position;
    return true;
}

void BStringInputStream::setStart(uint32_t offset) {
    const uint32_t absolute = position_ + startOffset_;
    seek(absolute >= offset ? absolute - offset : 0);
    startOffset_ = offset;
}

void BStringInputStream::setLength(int32_t length) {
    windowLength_ = length;
    seek(position_);
}

BStringInputStream* BStringInputStream::clone() const {
    return new BStringInputStream(source_);
}

}  // namespace quorvelin
