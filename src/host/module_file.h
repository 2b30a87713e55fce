// Looks into the file of a module without loading it, so that no code of the module runs: the information
// block lies in a section of its own.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/host_result.h"
#include "host/information_tree.h"

namespace quorvelin {

/// Name of the section that holds the information block of a module.
inline constexpr std::string_view kInformationSection = "PLUGININFO";

/// Reads the bytes of the information block out of the shared object at `path`. The error names the file.
HostResult<std::vector<unsigned char>> readInformationBlock(const std::string& path);

/// Reads the information block of the shared object at `path` and what it says. The error names the file.
HostResult<ModuleDescription> readModuleDescription(const std::string& path);

}  // namespace quorvelin
