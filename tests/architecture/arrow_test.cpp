#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>

namespace fs = std::filesystem;

namespace
{

const fs::path root = QUVANA_SOURCE_DIR;

/// The table of docs/architecture.md: folder -> folders that it may include.
std::map<std::string, std::set<std::string>> allowedArrows()
{
    std::map<std::string, std::set<std::string>> arrows;
    std::ifstream file(root / "docs/architecture.md");
    const std::regex row(R"(^\| `([^`]+)` \|(.*)\|$)");
    const std::regex name("`([^`]+)`");
    for (std::string line; std::getline(file, line);) {
        std::smatch match;
        if (!std::regex_match(line, match, row))
            continue;
        const std::string targets = match[2];
        auto &set = arrows[match[1]];
        for (std::sregex_iterator it(targets.begin(), targets.end(), name), end; it != end; ++it)
            set.insert((*it)[1]);
    }
    return arrows;
}

/// The listed folder that a path below src/ lies in; empty when none is listed for it.
std::string folderOf(const std::string &path, const std::map<std::string, std::set<std::string>> &arrows)
{
    std::string found;
    for (const auto &[folder, targets] : arrows) {
        if (path.starts_with(folder + "/") && folder.size() > found.size())
            found = folder;
    }
    return found;
}

TEST(Architecture, IncludesFollowTheTable)
{
    const auto arrows = allowedArrows();
    ASSERT_GE(arrows.size(), 8U) << "the table of docs/architecture.md could not be read";
    const std::regex include(R"(^\s*#\s*include\s+"([^"]+)\")");
    int seen = 0;
    for (const auto &entry : fs::recursive_directory_iterator(root / "src")) {
        const auto extension = entry.path().extension();
        if (extension != ".h" && extension != ".cpp")
            continue;
        const std::string path = fs::relative(entry.path(), root / "src").generic_string();
        const std::string from = folderOf(path, arrows);
        EXPECT_FALSE(from.empty()) << path << " lies in a folder that the table does not list";
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            std::smatch match;
            if (!std::regex_search(line, match, include) || !fs::exists(root / "src" / match[1].str()))
                continue; // a generated header, or one of another project
            ++seen;
            const std::string to = folderOf(match[1], arrows);
            EXPECT_TRUE(to == from || arrows.at(from).contains(to))
                << path << " must not include " << match[1];
        }
    }
    EXPECT_GT(seen, 50) << "hardly any include was found: is the test reading the sources?";
}

} // namespace
