// The table of class identities. Hosts name classes by these words, so they must never change.
#include "foundation/identity.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "foundation/query_faces.h"
#include "foundation/smart_object.h"
#include "support/script_text.h"

namespace quorvelin {
namespace {

struct Expected {
    const char* name;
    const char* text;
};

constexpr Expected kExpected[] = {
    {"IBTransportable", "0x9C09B2E3, 0x4EE1F67B, 0xC0C801BC, 0x2625060F "},
    {"BNotifySender", "0xE0A3D475, 0xF6694D2F, 0xBFA9A27C, 0x544B994A "},
    {"IBRemoteRemovable", "0x79D1A266, 0x4985715D, 0xF9DB7B96, 0x36363527 "},
    {"IBSmartObject", "0x1F9A425A, 0x42D9A875, 0xC8297898, 0x4036D949 "},
    {"IBSingleton", "0x03617278, 0x4FDA6EFC, 0x3D8A5BBF, 0xB94CA8A6 "},
    {"SException", "0x75CCBBE6, 0x4A1F45DD, 0x8920EF8C, 0x33E2E0BA "},
    {"IBQuery", "0xC80E6AEC, 0x471E4C1E, 0x0CD44B98, 0xD999D175 "},
    {"BRemoteRemovable", "0x3A42022E, 0x4C4653CD, 0x89F39499, 0xDBA550AD "},
    {"BSmartObject", "0xCD6DC52F, 0x49CB7B65, 0x0BFD72AC, 0x186F62FC "},
    {"IBHibernatable", "0x5B542A70, 0x416732D8, 0xF1AEA382, 0x5E2104BE "},
    {"BHibernatable", "0x2A6B187B, 0x4E476B9A, 0x4CEC5CA3, 0x6416A92A "},
    {"IBStream", "0xD47EE420, 0x42F68A1F, 0x617BAA9E, 0xE5C3CEC7 "},
    {"BStream", "0x817AA1BA, 0x42108811, 0x8D1DCBB0, 0x281D1586 "},
    {"IBRAStream", "0xE72F73B0, 0x441344F4, 0xBD3F49AA, 0xC50002B2 "},
    {"BInputStream", "0x022B7494, 0x475F2350, 0xEBAC15B4, 0x4A7E406A "},
    {"BRAInputStream", "0xC6EAA09B, 0x4A985C79, 0xF6AA42B9, 0xC7C7BC70 "},
    {"BOutputStream", "0x6EE8DA37, 0x4E279F92, 0x9F7F1CA3, 0x3DF6C3B6 "},
    {"BFileOutputStream", "0x5D6024CB, 0x4C7858A7, 0xC3565485, 0x67634C3D "},
    {"BMemoryOutputStream", "0x70D49163, 0x49774F07, 0x7ED4038F, 0xCD12835A "},
    {"IQuorvelin", "0x962F7303, 0x40AA36C3, 0x3F5579BC, 0x6EE36C83 "},
    {"IBLangPackage", "0x7366523A, 0x4B1EFFAA, 0x8E1BF1AE, 0x55237ADD "},
    {"IBTranslator", "0xD8EFFB12, 0x4F746C2A, 0xF530958E, 0xF8AECEC3 "},
    {"IBRTTISupport", "0x88BB2B3A, 0x43C5B6E0, 0xACFAB4B9, 0xB1CB99BB "},
    {"IBProgressIndicator", "0x8E2F0C81, 0x4EE0B126, 0x174E1BA4, 0x623C89AC "},
    {"IBSelfReg", "0x0EBFC445, 0x486DE4E4, 0x1E93F28A, 0x5C8266ED "},
    {"IBSupplier", "0xF3F01062, 0x44F52D70, 0xF73FB7BE, 0x8334EE18 "},
    {"IBEncryptionKey", "0x7B06FCB2, 0x45C6B0B2, 0xAC6FBB98, 0xAFBE145F "},
    {"IBReport", "0x9E901DF5, 0x42180C1D, 0xD1C3DDBC, 0x1413D907 "},
    {"IBSecretary", "0xEA1BB359, 0x47AC30F0, 0x826C8FA7, 0x750DD01F "},
    {"IActionSender", "0x5B914702, 0x90B24911, 0xBF62CABA, 0xEBA29EB1 "},
    {"IActionTarget", "0x44696222, 0x047C4FCE, 0x8185C38C, 0x4D9C3E91 "},
    {"IProgressCallback", "0x3F70F03F, 0x44F1F3D6, 0xA197D495, 0xF0241E86 "},
    {"IShell", "0xE34305F5, 0x41C82E85, 0x4E6ABCA1, 0x919EFA52 "},
    {"IPluginManager", "0x92A89ABE, 0x4888CEA9, 0xBA3F81B1, 0x41492838 "},
    {"IBSettings", "0x6F904086, 0x4358C263, 0x86ED65AE, 0xB74915D1 "},
    {"BSettings", "0x03932E88, 0x49DFB38D, 0x358A9DAD, 0x554D1679 "},
    {"BThread", "0x911F14BF, 0x4F7C11AD, 0xA4B588BC, 0x69D04F97 "},
    {"IGUIManager", "0xED807538, 0x9E884709, 0xA712E83F, 0xF6303721 "},
    {"JSKernel", "0xEC65A4CB, 0x44A3C650, 0x90EFFD9B, 0xB55DF85E "},
    {"quorvelinfactory", "0x0CB42D66, 0x4FD2FD46, 0x903EE3BB, 0xCABD96B1 "},
    {"BClassFactory", "0x0E2970AF, 0x4E301FBF, 0x2389F0BB, 0x8FE730A7 "},
};

TEST(Identity, EveryRecordStandsWithItsTextForm) {
    ASSERT_EQ(std::size(kExpected), static_cast<size_t>(ClassId::count));
    for (size_t i = 0; i < std::size(kExpected); ++i) {
        const stype_info& record = identityOf(static_cast<ClassId>(i));
        EXPECT_STREQ(record.name(), kExpected[i].name);
        EXPECT_EQ(support::ascii(std::u16string_view(record.wideName())), kExpected[i].name);
        EXPECT_STREQ(record.text, kExpected[i].text) << record.name();
        EXPECT_EQ(sizeof record.text, 48u);
    }
}

TEST(Identity, WordsAreThoseOfTheText) {
    for (size_t i = 0; i < std::size(kExpected); ++i) {
        const BGuid& guid = identityOf(static_cast<ClassId>(i)).guid;
        for (size_t word = 0; word < 4; ++word) {
            EXPECT_EQ(guid.words[word],
                      std::stoul(std::string(kExpected[i].text).substr(12 * word, 10), nullptr, 16));
        }
    }
}

TEST(Identity, WordWithFewerDigitsStaysPadded) {
    EXPECT_STREQ(identityOf(ClassId::IBSingleton).text, "0x03617278, 0x4FDA6EFC, 0x3D8A5BBF, 0xB94CA8A6 ");
    EXPECT_STREQ(identityOf(ClassId::BInputStream).text, "0x022B7494, 0x475F2350, 0xEBAC15B4, 0x4A7E406A ");
}

TEST(Identity, IdentifiersAreDifferent) {
    std::set<std::string> texts;
    for (const Expected& expected : kExpected) texts.insert(expected.text);
    EXPECT_EQ(texts.size(), std::size(kExpected));
}

// ---- asking an object through a record ----

TEST(QueryOn, NullObjectGivesNull) {
    for (size_t i = 0; i < std::size(kExpected); ++i) {
        EXPECT_EQ(identityOf(static_cast<ClassId>(i)).queryOn(nullptr, nullptr), nullptr);
    }
}

TEST(QueryOn, PlainRecordReachesTheObjectsQuery) {
    class Object : public BSmartObject {};
    BSmartObject* object = new Object();
    EXPECT_EQ(identityOf(ClassId::BSmartObject).queryOn(static_cast<IBTransportable*>(object), nullptr),
              object);
    EXPECT_EQ(identityOf(ClassId::IBQuery).queryOn(static_cast<IBTransportable*>(object), nullptr), nullptr);
    object->release();
}

TEST(QueryOn, SenderRecordsReachTheSecondOperation) {
    class Object : public BSmartObject {};
    BSmartObject* object = new Object();
    BNotifySender* const sender = object;
    EXPECT_EQ(identityOf(ClassId::BNotifySender).queryOn(sender, nullptr), sender);
    EXPECT_EQ(identityOf(ClassId::IActionSender).queryOn(sender, nullptr), nullptr);
    object->release();
}

TEST(QueryOn, ExceptionRecordReachesTheFifthOperation) {
    struct Object final : ExceptionQueryFace {
        void secondOperation() override {}
        void thirdOperation() override {}
        void fourthOperation() override {}
        void* query(const stype_info& id, IBQueryVisitor*) override {
            asked = &id;
            return this;
        }
        const stype_info* asked = nullptr;
    } object;
    EXPECT_EQ(identityOf(ClassId::SException).queryOn(static_cast<ExceptionQueryFace*>(&object), nullptr),
              &object);
    EXPECT_EQ(object.asked, &identityOf(ClassId::SException));
}

struct SixthObject final : SixthOperationQueryFace {
    void secondOperation() override {}
    void thirdOperation() override {}
    void fourthOperation() override {}
    void fifthOperation() override {}
    void* query(const stype_info& id, IBQueryVisitor*) override {
        asked = &id;
        return this;
    }
    const stype_info* asked = nullptr;
};

TEST(QueryOn, ProgressCallbackRecordReachesTheSixthOperation) {
    SixthObject object;
    EXPECT_EQ(identityOf(ClassId::IProgressCallback)
                  .queryOn(static_cast<SixthOperationQueryFace*>(&object), nullptr),
              &object);
    EXPECT_EQ(object.asked, &identityOf(ClassId::IProgressCallback));
}

TEST(QueryOn, ShellRecordReachesTheSecondInterface) {
    struct Shell {
        void* words[10] = {};
        SixthObject second;
    } shell;
    EXPECT_EQ(identityOf(ClassId::IShell).queryOn(&shell, nullptr), &shell.second);
    EXPECT_EQ(shell.second.asked, &identityOf(ClassId::IShell));
}

TEST(QueryOn, ActionTargetRecordReachesTheVirtualBase) {
    struct Target final : ActionTargetQueryFace {
        const stype_info& getClassId() const override { return identityOf(ClassId::IActionTarget); }
        void* query(const stype_info& id, IBQueryVisitor*) override {
            asked = &id;
            return this;
        }
        const stype_info* asked = nullptr;
    } target;
    EXPECT_EQ(
        identityOf(ClassId::IActionTarget).queryOn(static_cast<ActionTargetQueryFace*>(&target), nullptr),
        &target);
    EXPECT_EQ(target.asked, &identityOf(ClassId::IActionTarget));
}

}  // namespace
}  // namespace quorvelin
