#include "host/module_file.h"

#include <elf.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace quorvelin {
namespace {

// A file of which parts are read by offset; a part that does not lie in the file as a whole is refused.
class PartReader {
  public:
    explicit PartReader(const std::string& path) : path_(path) {
        std::error_code problem;
        if (!std::filesystem::exists(path, problem) || problem) {
            fail("no such file");
        } else if (!std::filesystem::is_regular_file(path, problem)) {
            fail("not a file");
        } else {
            size_ = std::filesystem::file_size(path, problem);
            stream_.open(path, std::ios::binary);
            if (problem || !stream_) {
                fail(std::string("cannot be read: ") + std::strerror(errno));
            }
        }
    }

    bool failed() const { return !error_.empty(); }
    const std::string& error() const { return error_; }

    void fail(const std::string& what) {
        if (!failed()) {
            error_ = path_ + ": " + what;
        }
    }

    bool read(std::uint64_t offset, void* target, std::uint64_t size) {
        if (failed()) {
            return false;
        }
        if (offset > size_ || size > size_ - offset) {
            fail("damaged: a part lies outside of the file");
            return false;
        }
        stream_.seekg(static_cast<std::streamoff>(offset));
        stream_.read(static_cast<char*>(target), static_cast<std::streamsize>(size));
        if (!stream_) {
            fail("cannot be read");
        }
        return !failed();
    }

    // Takes memory only for what lies in the file.
    bool read(std::uint64_t offset, std::vector<unsigned char>& target, std::uint64_t size) {
        if (failed() || offset > size_ || size > size_ - offset) {
            fail("damaged: a part lies outside of the file");
            return false;
        }
        target.resize(size);
        return read(offset, target.data(), size);
    }

  private:
    std::string path_;
    std::ifstream stream_;
    std::uint64_t size_ = 0;
    std::string error_;
};

bool isSharedObject(const Elf64_Ehdr& header) {
    return std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 && header.e_ident[EI_CLASS] == ELFCLASS64 &&
           header.e_ident[EI_DATA] == ELFDATA2LSB && header.e_type == ET_DYN &&
           header.e_shentsize == sizeof(Elf64_Shdr);
}

bool hasName(const std::vector<unsigned char>& names, std::uint32_t offset, std::string_view wanted) {
    return offset < names.size() && wanted.size() < names.size() - offset &&
           std::memcmp(names.data() + offset, wanted.data(), wanted.size()) == 0 &&
           names[offset + wanted.size()] == 0;
}

}  // namespace

HostResult<std::vector<unsigned char>> readInformationBlock(const std::string& path) {
    using Result = HostResult<std::vector<unsigned char>>;
    PartReader file(path);
    Elf64_Ehdr header{};
    if (!file.failed() && (!file.read(0, &header, sizeof header) || !isSharedObject(header))) {
        return Result::failure(path + ": not a shared object of this system");
    }
    std::vector<unsigned char> table;
    file.read(header.e_shoff, table, std::uint64_t{header.e_shnum} * sizeof(Elf64_Shdr));
    const auto section = [&](std::size_t index) {
        Elf64_Shdr result;
        std::memcpy(&result, table.data() + index * sizeof result, sizeof result);
        return result;
    };
    std::vector<unsigned char> names;
    if (!file.failed()) {
        if (header.e_shstrndx >= header.e_shnum) {
            file.fail("damaged: its sections have no names");
        } else {
            const Elf64_Shdr nameSection = section(header.e_shstrndx);
            file.read(nameSection.sh_offset, names, nameSection.sh_size);
        }
    }
    for (std::size_t i = 0; !file.failed() && i < header.e_shnum; ++i) {
        const Elf64_Shdr candidate = section(i);
        if (candidate.sh_type == SHT_PROGBITS && hasName(names, candidate.sh_name, kInformationSection)) {
            std::vector<unsigned char> block;
            if (file.read(candidate.sh_offset, block, candidate.sh_size)) {
                return Result::success(std::move(block));
            }
        }
    }
    file.fail("has no information block");
    return Result::failure(file.error());
}

HostResult<ModuleDescription> readModuleDescription(const std::string& path) {
    using Result = HostResult<ModuleDescription>;
    const auto block = readInformationBlock(path);
    if (!block) {
        return Result::failure(block.error);
    }
    const auto tree = parseInformationBlock(*block.value);
    if (!tree) {
        return Result::failure(path + ": " + tree.error);
    }
    auto description = describeModule(*tree.value);
    return description ? std::move(description) : Result::failure(path + ": " + description.error);
}

}  // namespace quorvelin
