// The examples: both hosts and the tour, which must print what stands beside them.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "support/process.h"

namespace quorvelin {
namespace {

std::string exampleFile(const char* name) {
    const std::string content = support::readFile(std::string(QUORVELIN_EXAMPLES_FOLDER) + "/" + name);
    EXPECT_FALSE(content.empty()) << name;
    return content;
}

TEST(Examples, PluginHostWorksThroughTheModule) {
    const std::string folder = std::filesystem::path(QUORVELIN_MODULE_FILE).parent_path().string();
    const support::ProcessResult result = support::runProcess(QUORVELIN_PLUGIN_HOST_FILE, {folder});
    EXPECT_EQ(result.output, exampleFile("plugin_host.expected"));
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
}

TEST(Examples, PluginHostSaysWhenThereIsNoModule) {
    const support::TemporaryFolder empty;
    const support::ProcessResult result = support::runProcess(QUORVELIN_PLUGIN_HOST_FILE, {empty.path()});
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "no module in " + empty.path() + " offers Quorvelin.NewInstance\n");
    EXPECT_EQ(result.status, 1);
}

TEST(Examples, EmbeddedHostSeesMessagesAndConsole) {
    const support::ProcessResult result = support::runProcess(QUORVELIN_EMBEDDED_HOST_FILE, {});
    EXPECT_EQ(result.output, exampleFile("embedded_host.expected"));
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
}

TEST(Examples, TourShowsTheLanguageInOneScreen) {
    const std::string tour = exampleFile("tour.js");
    EXPECT_LT(std::count(tour.begin(), tour.end(), '\n'), 60);
    const support::ProcessResult result = support::runProcess(
        QUORVELIN_PROGRAM_FILE, {"run", std::string(QUORVELIN_EXAMPLES_FOLDER) + "/tour.js"});
    EXPECT_EQ(result.output, exampleFile("tour.expected"));
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
}

}  // namespace
}  // namespace quorvelin
