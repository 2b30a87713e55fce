#include "foundation/stream.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "host/allocator.h"
#include "support/operation_place.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

using support::textOf;

class StringStream : public testing::Test {
  protected:
    BString text = textOf(u"ab\u0163d");
    BStringInputStream stream{&text};
};

TEST_F(StringStream, ReadsToTheEnd) {
    EXPECT_TRUE(stream.isOpen());
    EXPECT_TRUE(stream.isReadable());
    EXPECT_EQ(stream.size(), 4u);
    EXPECT_EQ(stream.readChar(), u'a');
    EXPECT_EQ(stream.readChar(), u'b');
    EXPECT_EQ(stream.position(), 2u);
    EXPECT_EQ(stream.readChar(), u'\u0163');
    EXPECT_FALSE(stream.atEnd());
    EXPECT_EQ(stream.readChar(), u'd');
    EXPECT_TRUE(stream.atEnd());
    EXPECT_EQ(stream.readChar(), kEndOfStream);
    EXPECT_EQ(stream.readChar(), kEndOfStream);
    EXPECT_EQ(stream.position(), 4u);
}

TEST_F(StringStream, LastCharacterCanBePushedBack) {
    stream.skip(3);
    const char16_t last = stream.readChar();
    stream.unreadChar(last);
    EXPECT_FALSE(stream.atEnd());
    EXPECT_EQ(stream.readChar(), last);
}

TEST_F(StringStream, QuirkAnotherCharacterPushedBackIsNotKept) {
    stream.readChar();
    stream.unreadChar(u'z');
    EXPECT_EQ(stream.readChar(), u'a');
}

TEST_F(StringStream, PushingBackTheEndDoesNothing) {
    stream.skip(4);
    stream.unreadChar(kEndOfStream);
    EXPECT_TRUE(stream.atEnd());
    EXPECT_EQ(stream.readChar(), kEndOfStream);
}

TEST_F(StringStream, PushingBackAtTheStartDoesNothing) {
    stream.unreadChar(u'a');
    EXPECT_EQ(stream.position(), 0u);
    EXPECT_EQ(stream.readChar(), u'a');
}

TEST_F(StringStream, ReadDropsTheHighByteOfEachCharacter) {
    uint8_t bytes[8] = {};
    EXPECT_EQ(stream.read(bytes, 4), 4u);
    EXPECT_EQ(bytes[0], 'a');
    EXPECT_EQ(bytes[1], 'b');
    EXPECT_EQ(bytes[2], 0x63);
    EXPECT_EQ(bytes[3], 'd');
    EXPECT_EQ(bytes[4], 0);
}

TEST_F(StringStream, ReadGivesShortCountAtTheEnd) {
    uint8_t bytes[8] = {};
    EXPECT_EQ(stream.read(bytes, 8), 4u);
    EXPECT_EQ(stream.read(bytes, 8), 0u);
}

TEST_F(StringStream, ReadOfNothingAndWithoutABuffer) {
    uint8_t byte = 7;
    EXPECT_EQ(stream.read(&byte, 0), 0u);
    EXPECT_EQ(byte, 7);
    EXPECT_EQ(stream.read(nullptr, 3), 3u);
    EXPECT_EQ(stream.readChar(), u'd');
}

TEST_F(StringStream, SkipBeyondTheEndGivesTheRest) {
    EXPECT_EQ(stream.skip(1), 1u);
    EXPECT_EQ(stream.skip(10), 3u);
    EXPECT_TRUE(stream.atEnd());
    EXPECT_EQ(stream.skip(1), 0u);
}

TEST_F(StringStream, Rewind) {
    stream.skip(3);
    EXPECT_TRUE(stream.rewind());
    EXPECT_EQ(stream.position(), 0u);
}

TEST_F(StringStream, Seek) {
    IBRAStream& randomAccess = stream;
    EXPECT_TRUE(randomAccess.seek(2));
    EXPECT_EQ(stream.readChar(), u'\u0163');
    EXPECT_TRUE(randomAccess.seek(4));
    EXPECT_TRUE(stream.atEnd());
    EXPECT_FALSE(randomAccess.seek(5));
    EXPECT_EQ(stream.position(), 4u);
}

TEST_F(StringStream, WindowMovesThePosition) {
    stream.skip(3);
    stream.setStart(1);
    EXPECT_EQ(stream.position(), 2u);
    stream.setStart(3);  // 2 + 1 - 3
    EXPECT_EQ(stream.position(), 0u);
    stream.setStart(1);  // 0 + 3 - 1
    EXPECT_EQ(stream.position(), 2u);
    stream.setStart(4);  // 2 + 1 is below 4
    EXPECT_EQ(stream.position(), 0u);
}

TEST_F(StringStream, WindowBehindTheEndLeavesThePosition) {
    stream.setStart(0);
    stream.skip(2);
    stream.setStart(1);
    stream.skip(3);
    ASSERT_EQ(stream.position(), 4u);
    stream.setStart(0);  // 4 + 1 is no position of the text
    EXPECT_EQ(stream.position(), 4u);
}

TEST_F(StringStream, LengthOfTheWindowLeavesThePosition) {
    stream.skip(2);
    stream.setLength(1);
    EXPECT_EQ(stream.position(), 2u);
    EXPECT_EQ(stream.readChar(), u'\u0163');
    EXPECT_EQ(stream.size(), 4u);
}

TEST_F(StringStream, PercentDone) {
    EXPECT_EQ(stream.percentDone(), 0u);
    stream.skip(1);
    EXPECT_EQ(stream.percentDone(), 25u);
    stream.skip(3);
    EXPECT_EQ(stream.percentDone(), 100u);
}

TEST_F(StringStream, CloneStartsOverOnTheSameText) {
    stream.skip(3);
    BStringInputStream* copy = stream.clone();
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->position(), 0u);
    EXPECT_EQ(copy->readChar(), u'a');
    EXPECT_EQ(stream.readChar(), u'd');
    EXPECT_TRUE(copy->release());
}

TEST_F(StringStream, CloneWithoutMemoryIsNull) {
    failAllocation(1);
    EXPECT_EQ(stream.clone(), nullptr);
    cancelAllocationFailure();
}

TEST_F(StringStream, FlushAndCloseDoNothing) {
    stream.readChar();
    stream.flush();
    stream.close();
    EXPECT_TRUE(stream.isOpen());
    EXPECT_EQ(stream.readChar(), u'b');
}

TEST_F(StringStream, ReferencesAreNotCounted) {
    stream.addRef();
    EXPECT_EQ(stream.refCount(), 0);
}

TEST_F(StringStream, LockIsRecursiveAndHoldsOthersBack) {
    stream.lock();
    stream.lock();
    stream.unlock();
    bool entered = false;
    std::thread other([&] {
        stream.lock();
        entered = true;
        stream.unlock();
    });
    EXPECT_FALSE(entered);
    stream.unlock();
    other.join();
    EXPECT_TRUE(entered);
}

TEST(EmptyStringStream, IsAtItsEndAtOnce) {
    const BString empty;
    BStringInputStream stream(&empty);
    EXPECT_TRUE(stream.isOpen());
    EXPECT_TRUE(stream.atEnd());
    EXPECT_EQ(stream.readChar(), kEndOfStream);
    EXPECT_EQ(stream.percentDone(), 100u);
    EXPECT_EQ(stream.skip(1), 0u);
}

TEST(ClosedStringStream, BehavesAsOneAtItsEnd) {
    BStringInputStream stream(nullptr);
    EXPECT_FALSE(stream.isOpen());
    EXPECT_FALSE(stream.isReadable());
    EXPECT_TRUE(stream.atEnd());
    EXPECT_EQ(stream.size(), 0u);
    EXPECT_EQ(stream.readChar(), kEndOfStream);
    EXPECT_EQ(stream.skip(3), 0u);
    EXPECT_FALSE(stream.seek(0));
    uint8_t bytes[4] = {};
    EXPECT_EQ(stream.read(bytes, 4), 0u);
    EXPECT_EQ(stream.read(nullptr, 4), 0u);
}

// A stream with nothing but what the base classes leave open, and a pushed-back character that is kept.
class CountingStream final : public BInputStream {
  public:
    explicit CountingStream(uint32_t size) : size_(size) {}
    void close() override {}
    bool isReadable() const override { return isOpen(); }
    char16_t readChar() override {
        char16_t character = 0;
        if (takeUnread(&character)) return character;
        return position_ < size_ ? static_cast<char16_t>(position_++) : kEndOfStream;
    }
    uint32_t size() const override { return size_; }
    uint32_t position() const override { return position_; }
    bool atEnd() const override { return position_ >= size_; }

  private:
    uint32_t size_;
    uint32_t position_ = 0;
};

TEST(InputStream, KeepsThePushedBackCharacter) {
    CountingStream stream(5);
    stream.readChar();
    stream.unreadChar(u'z');
    EXPECT_EQ(stream.readChar(), u'z');
    EXPECT_EQ(stream.readChar(), 1);
}

TEST(InputStream, CannotRewind) {
    CountingStream stream(5);
    EXPECT_FALSE(stream.rewind());
}

TEST(InputStream, SkipReads) {
    CountingStream stream(5);
    EXPECT_EQ(stream.skip(2), 2u);
    EXPECT_EQ(stream.skip(10), 3u);
    EXPECT_EQ(stream.percentDone(), 100u);
}

TEST(InputStream, PercentOfAHugeStreamDoesNotOverflow) {
    class Huge final : public BInputStream {
      public:
        void close() override {}
        bool isReadable() const override { return true; }
        char16_t readChar() override { return 0; }
        uint32_t size() const override { return 0xFFFFFFFF; }
        uint32_t position() const override { return 0x80000000; }
        bool atEnd() const override { return false; }
    } stream;
    EXPECT_EQ(stream.percentDone(), 50u);
}

TEST(StreamClass, IdentityIsThatOfTheRandomAccessStream) {
    const BString text;
    BStringInputStream stream(&text);
    EXPECT_STREQ(stream.getClassId().name(), "BRAInputStream");
    EXPECT_STREQ(static_cast<BNotifySender&>(stream).getClassId().name(), "BRAInputStream");
}

TEST(StreamClass, QueryFindsEveryFace) {
    const BString text;
    BStringInputStream stream(&text);
    BInputStream* const input = &stream;
    EXPECT_EQ(stream.query(identityOf(ClassId::BRAInputStream), nullptr),
              static_cast<BRAInputStream*>(&stream));
    EXPECT_EQ(stream.query(identityOf(ClassId::BInputStream), nullptr), input);
    EXPECT_EQ(stream.query(identityOf(ClassId::BStream), nullptr), static_cast<BStream*>(input));
    EXPECT_EQ(stream.query(identityOf(ClassId::IBStream), nullptr), static_cast<IBStream*>(input));
    EXPECT_EQ(stream.query(identityOf(ClassId::IBRAStream), nullptr), static_cast<IBRAStream*>(&stream));
    EXPECT_EQ(stream.query(identityOf(ClassId::IBTransportable), nullptr),
              static_cast<IBTransportable*>(static_cast<IBRAStream*>(&stream)));
    EXPECT_EQ(stream.query(identityOf(ClassId::IBRemoteRemovable), nullptr),
              static_cast<IBRemoteRemovable*>(input));
    EXPECT_EQ(stream.query(identityOf(ClassId::BNotifySender), nullptr),
              static_cast<BNotifySender*>(&stream));
    EXPECT_EQ(stream.query(identityOf(ClassId::BSmartObject), nullptr), nullptr);
}

TEST(StreamClass, QueryTriesTheClassesInOrder) {
    struct Path final : IBQueryVisitor {
        void enter(const stype_info& identity, void*) override { tried.push_back(identity.name()); }
        void leave() override { ++left; }
        std::vector<std::string> tried;
        int left = 0;
    } path;
    const BString text;
    BStringInputStream stream(&text);
    EXPECT_EQ(stream.query(identityOf(ClassId::JSKernel), &path), nullptr);
    EXPECT_EQ(path.tried, (std::vector<std::string>{
                              "BRAInputStream", "BInputStream", "IBRAStream", "IBTransportable", "BStream",
                              "IBStream", "IBRemoteRemovable", "IBTransportable", "BNotifySender"}));
    EXPECT_EQ(path.left, 9);
}

TEST(StreamClass, ReleaseDestroysAtOnceAndTellsListeners) {
    struct Listener final : BNotifyListener {
        int32_t notified(BNotifySender*) override {
            ++calls;
            return kGoOn;
        }
        int calls = 0;
    } listener;
    const BString text;
    BStringInputStream* stream = new BStringInputStream(&text);
    stream->addListener(&listener, 0);
    stream->addRef();
    EXPECT_TRUE(stream->release());
    EXPECT_EQ(listener.calls, 1);
}

#ifdef QUORVELIN_KNOWS_OPERATION_PLACES

TEST(StreamClass, OperationsStandInOrder) {
    using support::operationPlace;
    EXPECT_EQ(operationPlace(&IBRemoteRemovable::release), 5u);
    EXPECT_EQ(operationPlace(&IBRemoteRemovable::notifyDestroy), 6u);
    EXPECT_EQ(operationPlace(&IBStream::addRef), 7u);
    EXPECT_EQ(operationPlace(&IBStream::refCount), 8u);
    EXPECT_EQ(operationPlace(&IBStream::isOpen), 9u);
    EXPECT_EQ(operationPlace(&IBStream::rewind), 10u);
    EXPECT_EQ(operationPlace(&IBStream::close), 11u);
    EXPECT_EQ(operationPlace(&IBStream::isReadable), 12u);
    EXPECT_EQ(operationPlace(&IBStream::lock), 13u);
    EXPECT_EQ(operationPlace(&IBStream::unlock), 14u);
    EXPECT_EQ(operationPlace(&IBStream::read), 15u);
    EXPECT_EQ(operationPlace(&IBStream::readChar), 16u);
    EXPECT_EQ(operationPlace(&IBStream::size), 17u);
    EXPECT_EQ(operationPlace(&IBStream::position), 18u);
    EXPECT_EQ(operationPlace(&IBStream::percentDone), 19u);
    EXPECT_EQ(operationPlace(&IBStream::unreadChar), 20u);
    EXPECT_EQ(operationPlace(&IBStream::atEnd), 21u);
    EXPECT_EQ(operationPlace(&IBStream::skip), 22u);
    EXPECT_EQ(operationPlace(&BStringInputStream::flush), 23u);
    EXPECT_EQ(operationPlace(&BStringInputStream::setStart), 24u);
    EXPECT_EQ(operationPlace(&BStringInputStream::setLength), 25u);
    EXPECT_EQ(operationPlace(&BStringInputStream::clone), 26u);
    EXPECT_EQ(operationPlace(&IBRAStream::seek), 5u);
}

#endif

}  // namespace
}  // namespace quorvelin
