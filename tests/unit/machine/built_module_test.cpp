// What can be seen of the module from outside: its file, and the loaded library.

#include <elf.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "host/global_data.h"
#include "host/module_file.h"
#include "host/module_loader.h"
#include "machine/class_factory.h"

namespace quorvelin {
namespace {

// The names that a shared object offers to others: the defined global symbols of its dynamic symbol table.
std::vector<std::string> exportedNames(const char* path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    const auto read = [&bytes](auto& target, size_t offset) {
        ASSERT_LE(offset + sizeof target, bytes.size());
        std::memcpy(&target, bytes.data() + offset, sizeof target);
    };
    std::vector<std::string> names;
    Elf64_Ehdr header{};
    read(header, 0);
    for (size_t i = 0; i < header.e_shnum; ++i) {
        Elf64_Shdr table{};
        read(table, header.e_shoff + i * sizeof table);
        if (table.sh_type != SHT_DYNSYM) continue;
        Elf64_Shdr strings{};
        read(strings, header.e_shoff + table.sh_link * sizeof strings);
        for (size_t offset = 0; offset < table.sh_size; offset += sizeof(Elf64_Sym)) {
            Elf64_Sym symbol{};
            read(symbol, table.sh_offset + offset);
            if (symbol.st_shndx != SHN_UNDEF && ELF64_ST_BIND(symbol.st_info) != STB_LOCAL) {
                names.emplace_back(bytes.data() + strings.sh_offset + symbol.st_name);
            }
        }
    }
    return names;
}

TEST(BuiltModuleTest, ExportsOneFunctionAndNothingElse) {
    EXPECT_EQ(exportedNames(QUORVELIN_MODULE_FILE), std::vector<std::string>{"queryClassFactoryLocal"});
}

TEST(BuiltModuleTest, SymbolReaderSeesTheManyNamesOfTheHostLibrary) {
    const std::vector<std::string> names = exportedNames(QUORVELIN_HOST_LIBRARY_FILE);
    for (const char* name : {"_smalloc", "_srealloc", "_sfree", "dataCSProc", "EnterCriticalSection",
                             "GetStringTypeExW", "GetSystemTime", "GetTimeZoneInformation"}) {
        EXPECT_EQ(std::count(names.begin(), names.end(), name), 1) << name;
    }
}

// Works with the module as a host does: through the export and the virtual operations.
class LoadedModuleTest : public testing::Test {
  protected:
    void SetUp() override {
        auto loaded = LoadedModule::load(QUORVELIN_MODULE_FILE);
        ASSERT_TRUE(loaded) << loaded.error;
        module = std::move(loaded.value);
        factory = queryFactory();
        ASSERT_NE(factory, nullptr);
    }

    BClassFactory* queryFactory() const { return static_cast<BClassFactory*>(module->queryClassFactory()); }

    std::optional<LoadedModule> module;
    BClassFactory* factory = nullptr;
};

TEST_F(LoadedModuleTest, ExportGivesTheSameFactoryAndLeavesItsCountUnchanged) {
    EXPECT_EQ(factory->refCount(), 0);
    EXPECT_EQ(queryFactory(), factory);
    EXPECT_EQ(factory->refCount(), 0);
    EXPECT_TRUE(factory->release());
}

TEST_F(LoadedModuleTest, FactoryIsOfTheClassThatTheInformationBlockNames) {
    const auto description = readModuleDescription(QUORVELIN_MODULE_FILE);
    ASSERT_TRUE(description) << description.error;
    EXPECT_EQ(factory->getClassId().guid, description.value->factory);
    EXPECT_STREQ(factory->getClassId().name(), "quorvelinfactory");
    EXPECT_EQ(factory->query(identityOf(ClassId::IBQuery), nullptr), factory);
    factory->release();
}

TEST_F(LoadedModuleTest, OtherIdentifiersAreRefused) {
    EXPECT_EQ(factory->createInstance(identityOf(ClassId::IQuorvelin).guid, 0), nullptr);
    EXPECT_EQ(factory->createInstance(BGuid(), 0), nullptr);
    factory->release();
}

TEST_F(LoadedModuleTest, ReleasedFactoryIsFollowedByAFreshOne) {
    factory->addRef();
    EXPECT_FALSE(factory->release());
    EXPECT_TRUE(factory->release());
    factory = queryFactory();
    ASSERT_NE(factory, nullptr);
    EXPECT_EQ(factory->refCount(), 0);
    EXPECT_TRUE(factory->release());
}

TEST_F(LoadedModuleTest, ModuleCanBeUnloadedAndLoadedAgain) {
    const auto isMapped = [] {
        std::ifstream maps("/proc/self/maps");
        const std::string all{std::istreambuf_iterator<char>(maps), {}};
        return all.find("/quorvelin.so") != std::string::npos;
    };
    EXPECT_TRUE(isMapped());
    factory->release();
    module.reset();
    EXPECT_FALSE(isMapped());
    SetUp();
    EXPECT_EQ(factory->refCount(), 0);
    factory->release();
}

TEST_F(LoadedModuleTest, UnloadedModuleLeavesNothingInTheTableOfGlobalItems) {
    const stype_info& key = identityOf(ClassId::IBRemoteRemovable);
    void* const before = BGlobalData::getItem(key, "OnDestroy");
    factory->release();  // tells the process-wide list, which makes the module enter one if there is none
    EXPECT_NE(BGlobalData::getItem(key, "OnDestroy"), nullptr);
    module.reset();
    EXPECT_EQ(BGlobalData::getItem(key, "OnDestroy"), before);
}

}  // namespace
}  // namespace quorvelin
