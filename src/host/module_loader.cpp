#include "host/module_loader.h"

#include <dlfcn.h>

#include <filesystem>
#include <utility>

namespace quorvelin {
namespace {

constexpr const char* kExportName = "queryClassFactoryLocal";

std::string lastError() {
    const char* text = dlerror();
    return text != nullptr ? text : "unknown reason";
}

}  // namespace

HostResult<LoadedModule> LoadedModule::load(const std::string& path) {
    using Result = HostResult<LoadedModule>;
    // A bare file name would be searched for among the system's libraries.
    std::error_code problem;
    const std::filesystem::path full = std::filesystem::absolute(path, problem);
    if (problem || !std::filesystem::is_regular_file(full, problem)) {
        return Result::failure(path + ": no such file");
    }
    void* handle = dlopen(full.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        return Result::failure(path + ": cannot be loaded: " + lastError());
    }
    const auto found = reinterpret_cast<Export>(dlsym(handle, kExportName));
    if (found == nullptr) {
        dlclose(handle);
        return Result::failure(path + ": does not export " + kExportName);
    }
    return Result::success(LoadedModule(handle, found));
}

LoadedModule::LoadedModule(LoadedModule&& other) noexcept
    : handle_(std::exchange(other.handle_, nullptr)),
      queryClassFactory_(std::exchange(other.queryClassFactory_, nullptr)) {}

LoadedModule& LoadedModule::operator=(LoadedModule&& other) noexcept {
    std::swap(handle_, other.handle_);
    std::swap(queryClassFactory_, other.queryClassFactory_);
    return *this;
}

LoadedModule::~LoadedModule() {
    if (handle_ != nullptr) {
        dlclose(handle_);
    }
}

}  // namespace quorvelin
