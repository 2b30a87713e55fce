// A host that uses the module through the plug-in boundary alone.
//
// Of the module it calls the one export and, from there on, virtual operations. It links two libraries:
// tarvonshell, the host library, which finds and loads modules and holds the allocator that host and module
// share; and the archive quorvelin_engine, out of which it takes nothing but the small value classes - texts
// (BString) and identity records. No engine runs in this program but the one in the module.
//
// Usage: example_plugin_host FOLDER, where FOLDER holds the module.
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>

#include "host/module_file.h"
#include "host/module_loader.h"
#include "machine/class_factory.h"
#include "machine/kernel.h"

using namespace quorvelin;

namespace {

// A text for the terminal; characters outside ASCII as question marks.
std::string narrow(const BString& text) {
    std::string result;
    for (int32_t i = 0; i < text.length(); ++i) result += text[i] < 0x80 ? static_cast<char>(text[i]) : '?';
    return result;
}

// A value as text. Every operation takes the context under which it runs - for a host that is the machine -
// and a receiver, which for a host is null. The null pointer is a value too: undefined.
std::string show(const Value& value, JSContext* machine) {
    if (!value) return "undefined";
    BString text;
    value->asString(text, machine, nullptr);
    return narrow(text);
}

// The class that the module of the folder offers under the public name, looked up without loading anything.
struct Offer {
    std::string file;
    BGuid machineClass;
};

std::optional<Offer> findModule(const std::string& folder) {
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".so") continue;
        const auto description = readModuleDescription(entry.path().string());
        if (!description) continue;  // a shared object, but no module
        const BGuid* machineClass = description.value->classIdentifier(u"Quorvelin.NewInstance");
        if (machineClass != nullptr) return Offer{entry.path().string(), *machineClass};
    }
    return std::nullopt;
}

void useMachine(JSKernel* machine) {
    // Values carry a reference for whoever asked; `Value` lets it go at the end of its scope.
    const Value product(machine->evaluateText(BString(u"answer = 6 * 7; answer"), nullptr));
    std::printf("evaluated: %s\n", show(product, machine).c_str());

    // Globals are members of the machine.
    const Value answer(machine->getMember(BString(u"answer"), machine, nullptr));
    std::printf("read:      answer is %s\n", show(answer, machine).c_str());
    const Value name(machine->makeString(BString(u"host"), nullptr));
    const Value stored(machine->setMember(BString(u"caller_name"), name.get(), machine, nullptr));
    const Value greeting(machine->evaluateText(BString(u"'hello, ' + caller_name"), nullptr));
    std::printf("set:       %s\n", show(greeting, machine).c_str());

    // A function that a script has made is called with a list of arguments.
    const Value made(
        machine->evaluateText(BString(u"add = Function('a', 'b', 'return a + b;'); 1"), nullptr));
    const Value arguments(machine->makeArray(nullptr));
    const Value two(machine->makeNumber(JSNumberValue::of(2), nullptr));
    const Value first(arguments->setItem(0, two.get(), machine, nullptr));
    const Value second(arguments->setItem(1, answer.get(), machine, nullptr));
    const Value sum(machine->callMember(BString(u"add"), arguments.get(), machine, nullptr));
    std::printf("called:    add(2, answer) is %s\n", show(sum, machine).c_str());

    // A machine of the module says nothing: a failed run is a null result, and the next one works.
    const Value failed(machine->evaluateText(BString(u"1 + )"), nullptr));
    const Value after(machine->evaluateText(BString(u"answer + 1"), nullptr));
    std::printf("failed:    %s, then %s\n", show(failed, machine).c_str(), show(after, machine).c_str());
}

}  // namespace

int main(int count, char** arguments) {
    const std::string folder = count > 1 ? arguments[1] : ".";
    const std::optional<Offer> offer = findModule(folder);
    if (!offer) {
        std::fprintf(stderr, "no module in %s offers Quorvelin.NewInstance\n", folder.c_str());
        return 1;
    }
    std::printf("found:     %s\n", std::filesystem::path(offer->file).filename().c_str());

    auto module = LoadedModule::load(offer->file);
    if (!module) {
        std::fprintf(stderr, "%s\n", module.error.c_str());
        return 1;
    }
    // The export gives the factory. What a factory makes is asked for the face that the host wants to work
    // with.
    auto* factory = static_cast<BClassFactory*>(module.value->queryClassFactory());
    IBRemoteRemovable* made = factory != nullptr ? factory->createInstance(offer->machineClass, 0) : nullptr;
    void* face = made != nullptr ? made->query(identityOf(ClassId::JSKernel), nullptr) : nullptr;
    if (face == nullptr) {
        std::fprintf(stderr, "no machine\n");
        return 1;
    }
    auto* machine = static_cast<JSKernel*>(face);
    useMachine(machine);

    // Values first, then the machine, then the factory; the module is unloaded by the end of `module`.
    machine->release();
    factory->release();
    std::printf("released\n");
    return 0;
}
