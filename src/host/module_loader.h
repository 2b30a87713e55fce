// Loads a module into the process and finds its one export.
#pragma once

#include <string>

#include "host/host_result.h"

namespace quorvelin {

/// A module in memory; the destructor unloads it. By then the host must have let go of all that came out of
/// the module, the factory included.
class LoadedModule {
  public:
    /// Loads the shared object at `path` and looks up `queryClassFactoryLocal` in it. The error names the
    /// file.
    static HostResult<LoadedModule> load(const std::string& path);

    LoadedModule(LoadedModule&& other) noexcept;
    LoadedModule& operator=(LoadedModule&& other) noexcept;
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;
    ~LoadedModule();

    /// Calls the export: the module's one class factory, borrowed, or null when it could not be made.
    void* queryClassFactory() const { return queryClassFactory_(); }

  private:
    using Export = void* (*)();

    LoadedModule(void* handle, Export entry) : handle_(handle), queryClassFactory_(entry) {}

    void* handle_;
    Export queryClassFactory_;
};

}  // namespace quorvelin
