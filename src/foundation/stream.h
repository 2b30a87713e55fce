// Input streams: how script text and saved trees reach the engine, one 16-bit character at a time with one
// character of push-back.
//
// A stream has no reference count. Whoever holds it owns it alone, and `release` destroys it at once. One
// stream is read by one thread; `lock` and `unlock` are there for hosts that share one.
#pragma once

#include <cstdint>

#include "foundation/bstring.h"
#include "foundation/smart_object.h"
#include "host/critical_section.h"

namespace quorvelin {

// Stands for the end of a stream and cannot be delivered as a character.
inline constexpr char16_t kEndOfStream = 0xFFFF;

class IBStream : public IBRemoteRemovable {
  public:
    // Streams are not counted; these two only keep the places of the smart object's operations.
    virtual void addRef() {}
    virtual int32_t refCount() const { return 0; }

    virtual bool isOpen() const = 0;
    // Back to the start. False when the stream cannot do that.
    virtual bool rewind() = 0;
    virtual void close() = 0;
    virtual bool isReadable() const = 0;
    virtual void lock() = 0;
    virtual void unlock() = 0;
    // Fills `buffer` with the low bytes of up to `n` characters and gives how many there were. A null buffer
    // skips instead.
    virtual uint32_t read(uint8_t* buffer, uint32_t n) = 0;
    // The next character, or `kEndOfStream`.
    virtual char16_t readChar() = 0;
    // The length in characters; 0 when not open.
    virtual uint32_t size() const = 0;
    virtual uint32_t position() const = 0;
    // How far the reading has come, 0 to 100; 100 for a stream of size 0.
    virtual uint32_t percentDone() const = 0;
    // Pushes one character back.
    virtual void unreadChar(char16_t character) = 0;
    virtual bool atEnd() const = 0;
    // Passes over up to `n` characters and gives how many there were.
    virtual uint32_t skip(uint32_t n) = 0;
};

// A stream with an open flag and a recursive lock.
class BStream : public IBStream {
  public:
    BStream() { InitializeCriticalSection(&section_); }
    ~BStream() override { DeleteCriticalSection(&section_); }

    bool isOpen() const override { return open_; }
    bool rewind() override { return false; }
    void lock() override { EnterCriticalSection(&section_); }
    void unlock() override { LeaveCriticalSection(&section_); }

  protected:
    void setOpen(bool open) { open_ = open; }

  private:
    bool open_ = true;
    SCriticalSection section_;
};

class BInputStream : public BStream {
  public:
    uint32_t read(uint8_t* buffer, uint32_t n) override;
    uint32_t percentDone() const override;
    void unreadChar(char16_t character) override;
    uint32_t skip(uint32_t n) override;

  protected:
    // The pushed-back character, for classes that keep one. True, once, when there is one.
    bool takeUnread(char16_t* character);

  private:
    bool hasUnread_ = false;
    char16_t unread_ = 0;
};

// The face for random access.
class IBRAStream : public IBTransportable {
  public:
    // Moves to `position`. False, without moving, when the stream is not open or `position` is behind its
    // size.
    virtual bool seek(uint32_t position) = 0;
};

class BRAInputStream : public BInputStream, public IBRAStream {
  public:
    const stype_info& getClassId() const override;
    void* query(const stype_info& id, IBQueryVisitor* visitor) override;
    bool isPresent() const override { return true; }

    static void* operator new(size_t size) noexcept { return IBTransportable::operator new(size); }
    static void operator delete(void* block) noexcept { IBTransportable::operator delete(block); }

  protected:
    uint32_t position_ = 0;
    uint32_t startOffset_ = 0;
    int32_t windowLength_ = -1;
};

// A stream over the units of a text. The text is borrowed: it must outlive the stream and must not change
// while it is read. A null text makes a stream that is not open.
class BStringInputStream : public BRAInputStream {
  public:
    explicit BStringInputStream(const BString* source);

    bool rewind() override;
    void close() override {}
    bool isReadable() const override { return isOpen(); }
    char16_t readChar() override;
    uint32_t size() const override;
    uint32_t position() const override { return position_; }
    // Steps back by one. Quirk: the character itself is not kept, so what is read next is what the text holds
    // there, whatever was pushed back.
    void unreadChar(char16_t character) override;
    bool atEnd() const override;
    uint32_t skip(uint32_t n) override;

    virtual void flush() {}
    // The window: moves the position by the difference of the old and the new start, and keeps the start.
    virtual void setStart(uint32_t offset);
    virtual void setLength(int32_t length);
    // A new stream over the same text at position 0, or null without memory. The caller owns it.
    virtual BStringInputStream* clone() const;
    // Behind the others, as it takes a place of its own among them here: it comes from the face for random
    // access.
    bool seek(uint32_t position) override;

  private:
    const BString* source_;
};

}  // namespace quorvelin
