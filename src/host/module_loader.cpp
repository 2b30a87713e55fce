#include "host/module_loader.h"

#include <dlfcn.h>

#include <filesystem>
#include <utility>

namespace quorvelin {
namespace {

constexpr const char* exportName = "queryClassFactoryLocal";

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
    const auto found = reinterpret_cast<Export>(dlsym(handle, exportName));
    if (found == nullptr) {
        dlclose(handle);
        return Result::failure(path + ": does not export " + exportName);
    }
    return Result::success(LoadedModule(handle, found));
}

LoadedModule::LoadedModule(LoadedModule&& other) noexcept
    : m_handle(std::exchange(other.m_handle, nullptr)),
      m_queryClassFactory(std::exchange(other.m_queryClassFactory, nullptr)) {}

LoadedModule& LoadedModule::operator=(LoadedModule&& other) noexcept {
    std::swap(m_handle, other.m_handle);
    std::swap(m_queryClassFactory, other.m_queryClassFactory);
    return *this;
}

LoadedModule::~LoadedModule() {
    if (m_handle != nullptr) {
        dlclose(m_handle);
    }
}

}  // namespace quorvelin
