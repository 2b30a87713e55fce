#include "host/module_file.h"

#include <elf.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "host/module_loader.h"

namespace quorvelin {
namespace {

class ModuleFileTest : public testing::Test {
  protected:
    void SetUp() override {
        path = std::filesystem::temp_directory_path() / ("quorvelin_module_file_" + std::to_string(getpid()));
    }
    void TearDown() override { std::filesystem::remove(path); }

    void write(const std::vector<char>& bytes) {
        std::ofstream file(path, std::ios::binary | std::ios::trunc);
        file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }

    static std::vector<char> sampleModule() {
        std::ifstream file(QUORVELIN_SAMPLE_MODULE_FILE, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    // The block or the error; never both and never neither.
    bool isReadable() {
        const auto block = readInformationBlock(path);
        EXPECT_NE(static_cast<bool>(block), !block.error.empty());
        if (!block) {
            EXPECT_EQ(block.error.rfind(path.string() + ": ", 0), 0u) << block.error;
        }
        return static_cast<bool>(block);
    }

    std::filesystem::path path;
};

TEST_F(ModuleFileTest, BlockIsReadOutOfTheFile) {
    const auto block = readInformationBlock(QUORVELIN_SAMPLE_MODULE_FILE);
    ASSERT_TRUE(block) << block.error;
    EXPECT_EQ(block.value->size(), 40u);
    const auto tree = parseInformationBlock(*block.value);
    ASSERT_TRUE(tree) << tree.error;
    EXPECT_EQ(tree.value->name, u"A");
    ASSERT_NE(tree.value->attribute(u"B"), nullptr);
    EXPECT_EQ(*tree.value->attribute(u"B"), u"C");
}

TEST_F(ModuleFileTest, DescriptionErrorNamesTheFile) {
    EXPECT_EQ(readModuleDescription(QUORVELIN_SAMPLE_MODULE_FILE).error,
              std::string(QUORVELIN_SAMPLE_MODULE_FILE) + ": the information block describes no plug-in");
}

TEST_F(ModuleFileTest, SharedObjectWithoutBlockIsRefused) {
    EXPECT_EQ(readInformationBlock(QUORVELIN_HOST_LIBRARY_FILE).error,
              std::string(QUORVELIN_HOST_LIBRARY_FILE) + ": has no information block");
}

TEST_F(ModuleFileTest, MissingFileAndFolderAreRefused) {
    EXPECT_EQ(readInformationBlock(path).error, path.string() + ": no such file");
    EXPECT_EQ(readInformationBlock(path.parent_path()).error, path.parent_path().string() + ": not a file");
}

TEST_F(ModuleFileTest, FileOfAnotherKindIsRefused) {
    const std::string error = path.string() + ": not a shared object of this system";
    write({});
    EXPECT_EQ(readInformationBlock(path).error, error);
    write(std::vector<char>(1000, 'x'));
    EXPECT_EQ(readInformationBlock(path).error, error);
    for (const int place : {EI_MAG0, EI_CLASS, EI_DATA}) {
        std::vector<char> module = sampleModule();
        module[static_cast<std::size_t>(place)] = 9;
        write(module);
        EXPECT_EQ(readInformationBlock(path).error, error);
    }
}

TEST_F(ModuleFileTest, TruncatedFileIsRefused) {
    const std::vector<char> module = sampleModule();
    ASSERT_GT(module.size(), sizeof(Elf64_Ehdr));
    for (std::size_t length = 0; length < module.size(); length += length < 200 ? 1 : 251) {
        write({module.begin(), module.begin() + static_cast<std::ptrdiff_t>(length)});
        EXPECT_FALSE(isReadable()) << length;
    }
    write(module);
    EXPECT_TRUE(isReadable());
}

TEST_F(ModuleFileTest, EveryDamagedByteOfTheHeadersGivesBlockOrError) {
    const std::vector<char> module = sampleModule();
    Elf64_Ehdr header;
    ASSERT_GT(module.size(), sizeof header);
    std::memcpy(&header, module.data(), sizeof header);
    const auto damage = [&](std::size_t place) {
        for (const int change : {0x01, 0x80, 0xFF}) {
            std::vector<char> damaged = module;
            damaged[place] = static_cast<char>(damaged[place] ^ change);
            write(damaged);
            isReadable();
        }
    };
    for (std::size_t place = 0; place < sizeof header; ++place) {
        damage(place);
    }
    const std::size_t tableEnd = header.e_shoff + header.e_shnum * sizeof(Elf64_Shdr);
    ASSERT_LE(tableEnd, module.size());
    for (std::size_t place = header.e_shoff; place < tableEnd; ++place) {
        damage(place);
    }
}

TEST(ModuleLoaderTest, ExportOfLoadedModuleIsCalled) {
    auto module = LoadedModule::load(QUORVELIN_SAMPLE_MODULE_FILE);
    ASSERT_TRUE(module) << module.error;
    const auto* factory = static_cast<const int*>(module.value->queryClassFactory());
    ASSERT_NE(factory, nullptr);
    EXPECT_EQ(*factory, 4711);
    LoadedModule moved = std::move(*module.value);
    EXPECT_EQ(moved.queryClassFactory(), factory);
}

TEST(ModuleLoaderTest, DestructorUnloads) {
    const auto isMapped = [] {
        std::ifstream maps("/proc/self/maps");
        const std::string all{std::istreambuf_iterator<char>(maps), {}};
        return all.find("sample_module.so") != std::string::npos;
    };
    EXPECT_FALSE(isMapped());
    {
        const auto module = LoadedModule::load(QUORVELIN_SAMPLE_MODULE_FILE);
        ASSERT_TRUE(module) << module.error;
        EXPECT_TRUE(isMapped());
    }
    EXPECT_FALSE(isMapped());
}

TEST(ModuleLoaderTest, FileWithoutExportIsRefused) {
    EXPECT_EQ(LoadedModule::load(QUORVELIN_HOST_LIBRARY_FILE).error,
              std::string(QUORVELIN_HOST_LIBRARY_FILE) + ": does not export queryClassFactoryLocal");
}

TEST(ModuleLoaderTest, MissingFileAndOtherFileAreRefused) {
    EXPECT_EQ(LoadedModule::load("/no/such/module.so").error, "/no/such/module.so: no such file");
    const std::string noModule = QUORVELIN_TESTS_FOLDER "/CMakeLists.txt";
    EXPECT_EQ(LoadedModule::load(noModule).error.rfind(noModule + ": cannot be loaded: ", 0), 0u);
}

}  // namespace
}  // namespace quorvelin
