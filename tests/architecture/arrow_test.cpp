#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <string>

namespace fs = std::filesystem;

namespace
{

const fs::path root = QUVANA_SOURCE_DIR;

/// Hands every line of a file on that fits a pattern.
template <typename Take>
void eachMatch(const fs::path &path, const char *pattern, Take take)
{
    const std::regex wanted(pattern);
    std::ifstream file(path);
    std::smatch match;
    for (std::string line; std::getline(file, line);) {
        if (std::regex_search(line, match, wanted))
            take(match);
    }
}

/// The folder of a path below src/; those of the platform have two names.
std::string folderOf(const std::string &path)
{
    return path.substr(0, path.find('/', path.starts_with("platform/") ? path.find('/') + 1 : 0));
}

TEST(Architecture, IncludesFollowTheTable)
{
    std::map<std::string, std::string> arrows; // folder -> the folders that it may include, in backticks
    eachMatch(root / "docs/architecture.md", R"(^\| `([^`]+)` \|(.*)\|$)",
              [&](const std::smatch &row) { arrows[row[1]] = row[2]; });
    ASSERT_GE(arrows.size(), 8U) << "the table of docs/architecture.md could not be read";
    int seen = 0;
    for (const auto &entry : fs::recursive_directory_iterator(root / "src")) {
        const auto extension = entry.path().extension();
        if (extension != ".h" && extension != ".cpp")
            continue;
        const std::string path = fs::relative(entry.path(), root / "src").generic_string();
        const std::string from = folderOf(path);
        EXPECT_TRUE(arrows.contains(from)) << path << " lies in a folder that the table does not list";
        eachMatch(entry.path(), R"(^\s*#\s*include\s+"([^"]+)\")", [&](const std::smatch &include) {
            if (!fs::exists(root / "src" / include[1].str()))
                return; // a generated header, or one of another project
            ++seen;
            const std::string to = folderOf(include[1]);
            EXPECT_TRUE(to == from || arrows[from].find('`' + to + '`') != std::string::npos)
                << path << " must not include " << include[1];
        });
    }
    EXPECT_GT(seen, 50) << "hardly any include was found: is the test reading the sources?";
}

} // namespace
