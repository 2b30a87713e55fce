// The identity records of all classes and interfaces that the system declares: one static `stype_info` each,
// built when the library loads, read-only afterwards. A host names a class by its record, so the whole table
// stands even where the engine itself makes no use of a class.
#pragma once

#include <cstdint>

#include "host/class_identity.h"

namespace quorvelin {

// How `queryOn` reaches the `query` operation of an object of the class. The classes differ in where `query`
// stands among their operations.
enum class QueryRoute : uint8_t {
    object,            // the object's `query`, the fourth operation
    exception,         // the fifth operation of the object
    sender,            // the second operation of the object
    actionTarget,      // the second operation of the face that the object's virtual base gives
    progressCallback,  // the sixth operation of the object
    shell,             // the sixth operation of the second interface, behind the object's first ten words
};

// X(class name, word 1, word 2, word 3, word 4, query route)
#define QUORVELIN_IDENTITIES(X)                                                            \
    X(IBTransportable, 0x9C09B2E3, 0x4EE1F67B, 0xC0C801BC, 0x2625060F, object)             \
    X(BNotifySender, 0xE0A3D475, 0xF6694D2F, 0xBFA9A27C, 0x544B994A, sender)               \
    X(IBRemoteRemovable, 0x79D1A266, 0x4985715D, 0xF9DB7B96, 0x36363527, object)           \
    X(IBSmartObject, 0x1F9A425A, 0x42D9A875, 0xC8297898, 0x4036D949, object)               \
    X(IBSingleton, 0x03617278, 0x4FDA6EFC, 0x3D8A5BBF, 0xB94CA8A6, object)                 \
    X(SException, 0x75CCBBE6, 0x4A1F45DD, 0x8920EF8C, 0x33E2E0BA, exception)               \
    X(IBQuery, 0xC80E6AEC, 0x471E4C1E, 0x0CD44B98, 0xD999D175, object)                     \
    X(BRemoteRemovable, 0x3A42022E, 0x4C4653CD, 0x89F39499, 0xDBA550AD, object)            \
    X(BSmartObject, 0xCD6DC52F, 0x49CB7B65, 0x0BFD72AC, 0x186F62FC, object)                \
    X(IBHibernatable, 0x5B542A70, 0x416732D8, 0xF1AEA382, 0x5E2104BE, object)              \
    X(BHibernatable, 0x2A6B187B, 0x4E476B9A, 0x4CEC5CA3, 0x6416A92A, object)               \
    X(IBStream, 0xD47EE420, 0x42F68A1F, 0x617BAA9E, 0xE5C3CEC7, object)                    \
    X(BStream, 0x817AA1BA, 0x42108811, 0x8D1DCBB0, 0x281D1586, object)                     \
    X(IBRAStream, 0xE72F73B0, 0x441344F4, 0xBD3F49AA, 0xC50002B2, object)                  \
    X(BInputStream, 0x022B7494, 0x475F2350, 0xEBAC15B4, 0x4A7E406A, object)                \
    X(BRAInputStream, 0xC6EAA09B, 0x4A985C79, 0xF6AA42B9, 0xC7C7BC70, object)              \
    X(BOutputStream, 0x6EE8DA37, 0x4E279F92, 0x9F7F1CA3, 0x3DF6C3B6, object)               \
    X(BFileOutputStream, 0x5D6024CB, 0x4C7858A7, 0xC3565485, 0x67634C3D, object)           \
    X(BMemoryOutputStream, 0x70D49163, 0x49774F07, 0x7ED4038F, 0xCD12835A, object)         \
    X(IQuorvelin, 0x962F7303, 0x40AA36C3, 0x3F5579BC, 0x6EE36C83, object)                  \
    X(IBLangPackage, 0x7366523A, 0x4B1EFFAA, 0x8E1BF1AE, 0x55237ADD, object)               \
    X(IBTranslator, 0xD8EFFB12, 0x4F746C2A, 0xF530958E, 0xF8AECEC3, object)                \
    X(IBRTTISupport, 0x88BB2B3A, 0x43C5B6E0, 0xACFAB4B9, 0xB1CB99BB, object)               \
    X(IBProgressIndicator, 0x8E2F0C81, 0x4EE0B126, 0x174E1BA4, 0x623C89AC, object)         \
    X(IBSelfReg, 0x0EBFC445, 0x486DE4E4, 0x1E93F28A, 0x5C8266ED, object)                   \
    X(IBSupplier, 0xF3F01062, 0x44F52D70, 0xF73FB7BE, 0x8334EE18, object)                  \
    X(IBEncryptionKey, 0x7B06FCB2, 0x45C6B0B2, 0xAC6FBB98, 0xAFBE145F, object)             \
    X(IBReport, 0x9E901DF5, 0x42180C1D, 0xD1C3DDBC, 0x1413D907, object)                    \
    X(IBSecretary, 0xEA1BB359, 0x47AC30F0, 0x826C8FA7, 0x750DD01F, object)                 \
    X(IActionSender, 0x5B914702, 0x90B24911, 0xBF62CABA, 0xEBA29EB1, sender)               \
    X(IActionTarget, 0x44696222, 0x047C4FCE, 0x8185C38C, 0x4D9C3E91, actionTarget)         \
    X(IProgressCallback, 0x3F70F03F, 0x44F1F3D6, 0xA197D495, 0xF0241E86, progressCallback) \
    X(IShell, 0xE34305F5, 0x41C82E85, 0x4E6ABCA1, 0x919EFA52, shell)                       \
    X(IPluginManager, 0x92A89ABE, 0x4888CEA9, 0xBA3F81B1, 0x41492838, object)              \
    X(IBSettings, 0x6F904086, 0x4358C263, 0x86ED65AE, 0xB74915D1, object)                  \
    X(BSettings, 0x03932E88, 0x49DFB38D, 0x358A9DAD, 0x554D1679, object)                   \
    X(BThread, 0x911F14BF, 0x4F7C11AD, 0xA4B588BC, 0x69D04F97, object)                     \
    X(IGUIManager, 0xED807538, 0x9E884709, 0xA712E83F, 0xF6303721, object)                 \
    X(JSKernel, 0xEC65A4CB, 0x44A3C650, 0x90EFFD9B, 0xB55DF85E, object)                    \
    X(quorvelinfactory, 0x0CB42D66, 0x4FD2FD46, 0x903EE3BB, 0xCABD96B1, object)            \
    X(BClassFactory, 0x0E2970AF, 0x4E301FBF, 0x2389F0BB, 0x8FE730A7, object)

enum class ClassId : int32_t {
#define QUORVELIN_IDENTITY(name, w1, w2, w3, w4, route) name,
    QUORVELIN_IDENTITIES(QUORVELIN_IDENTITY)
#undef QUORVELIN_IDENTITY
        count
};

// The identity record of a class. Also right while other static objects are being built.
const stype_info& identityOf(ClassId id);

}  // namespace quorvelin
