#include "system/pathname.h"

#include <fcntl.h>
#include <glob.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "system/regexp.h"
#include "tests/support/fresh_folder.h"
#include "text/strlist.h"

namespace {

namespace fs = std::filesystem;

// The texts with blanks between them; null is "-".
template <class... Text>
std::string Show(Text const&... texts) {
    std::string all;
    for (String_t const& s : {String_t(texts)...}) all += s.IsNull() ? "- " : s + " ";
    return all.substr(0, all.size() - 1);
}

using P = Pathname;

TEST(Pathname, IsCutIntoPieces) {
    char const* const rows[][3] = {
        {nullptr, "", ". - - rel no"},     {"", "", ".   rel no"},
        {"a", "", ". a a rel has"},        {"x.c", nullptr, ". x.c x.c rel no"},
        {"/x", "x", "  / abs has"},        {"/", "b", "  / abs no"},
        {"a/bc", "/bc", "a bc a rel has"}, {"d/x.o", ".o", "d x d/x rel has"},
        {"d/.o", ".o", "d  d/ rel has"},   {".o", ".o", ".   rel no"},
        {"~u/", "u/x", "~u  ~u/ abs no"}};
    for (auto const& row : rows) {
        P const p(row[0]);
        EXPECT_EQ(row[2], Show(p.Dir(), p.Leaf(row[1]), p.Base(row[1]), p.IsAbs() ? "abs" : "rel",
                               p.HasExt(row[1]) ? "has" : "no"));
    }
}

TEST(Pathname, TakesExtensionsAndNames) {
    char const* const rows[][3] = {{nullptr, ".o", "- - - .o .o"},
                                   {"", ".o", ".o .o .o .o .o"},
                                   {"x.c", nullptr, "x.c x.c x.c x.c x.c"},
                                   {"/", "b", "/b /b /b /b b//"},
                                   {"a", "", "a a a a/ /a"},
                                   {"x.c", ".o", "x.c.o x.o x.c x.c/.o .o/x.c"},
                                   {"x.o", ".o", "x.o x.o x.o x.o/.o .o/x.o"},
                                   {"a/.c", ".o", "a/.c.o a/.o a/.c a/.c/.o .o/a/.c"},
                                   {"a.b/", "x", "a.b/x a.b/x a.b/x a.b//x x/a.b/"},
                                   {".o", ".o", ".o .o.o .o.o .o/.o .o/.o"}};
    for (auto const& row : rows) {
        P const p(row[0]);
        EXPECT_EQ(row[2], Show(P(p).SetExt(row[1]), P(p).ChExt(row[1]), P(row[0], row[1]),
                               P(p).Append(row[1]), P(p).Insert(row[1])));
    }
}

TEST(Pathname, SharesItsTextUntilItChanges) {
    char const* const rows[][2] = {
        {nullptr, "- - -"},       {"C:\\Dir\\F", "/c:/dir/f c:/dir/f C:\\Dir\\F"},
        {"X\\Y", "x/y x/y X\\Y"}, {"d:", "/d:/ d: d:"},
        {"D:x", "/d:/x d:x D:x"}, {"Ab:c", "Ab:c Ab:c Ab:c"},
        {"\\C:", "/c: /c: \\C:"}};
    for (auto const& row : rows) {
        P path(row[0]), copy(path);
        String_t const piece = path.Base();
        EXPECT_EQ(row[1], Show(path.Transform(), copy, piece));
    }
    P const path("a/x.o");
    P copy;
    copy = static_cast<String_t const&>(path);
    for (P const& p : {copy.ChExt(".o"), copy.ChExtOpt(".c"), copy.Append(nullptr)})
        EXPECT_EQ(path.Get(), p.Get());
    copy.Append(copy).ChExt(copy.Get() + 8);
    EXPECT_EQ("a/x.o/a/xx.o a/x.o", Show(copy, path));
}

// Component by component, as one would do it by hand.
std::string Collapsed(std::string const& text) {
    std::vector<std::string> out;
    if (text.empty() || text == "." || text == "..") return text;
    std::string rest = text + '/', result;
    for (bool first = true; !rest.empty(); first = false) {
        std::string const part = rest.substr(0, rest.find('/'));
        rest.erase(0, part.size() + 1);
        if ((part.empty() && !first) || part == ".") continue;
        if (part != ".." || out.empty() || out.back() == "..")
            out.push_back(part);
        else if (!out.back().empty())
            out.pop_back();
    }
    for (auto const& part : out) result += part + '/';
    if (result.size() > 1) result.pop_back();
    return out.empty() ? "-" : result;
}

TEST(Pathname, CollapsesLikeTheModel) {
    char const* const parts[] = {"/", "/", "a/", "bc", ".", "..", "/./", "/../", "component"};
    std::vector<std::string> paths{"/", ".", "..", "a/..", "//x", "/a/./b/../c/", "a/b/../../.."};
    std::mt19937 random(1);
    while (paths.size() < 20000) {
        paths.emplace_back();
        for (auto n = random() % 14; n > 0; --n) paths.back() += parts[random() % 9];
    }
    for (auto const& path : paths) {
        P const source(path.c_str());
        ASSERT_EQ(Collapsed(path), Show(P(source).Collapse())) << path;
        ASSERT_EQ(path, Show(source)) << "a copy changed";
    }
    EXPECT_EQ("-", Show(P().Collapse()));
}

TEST(Pathname, PutsTheRightDirectoryInFront) {
    FreshFolder const folder;
    std::string const cwd = fs::current_path(), home = getpwuid(getuid())->pw_dir;
    std::string const rows[][2] = {{"", ""},
                                   {"/a/../b/", "/b"},
                                   {"x/./y", cwd + "/x/y"},
                                   {".", cwd},
                                   {"a/..", cwd},
                                   {"~", home},
                                   {"~/a/../b", home + "/b"},
                                   {"~root//x/", getpwnam("root")->pw_dir + std::string("/x")},
                                   {"~no such user/../a", "~no such user/../a"}};
    for (auto const& row : rows) EXPECT_EQ(row[1], Show(P(row[0].c_str()).Abs()));
    EXPECT_EQ("- " + home + "/b", Show(P().Abs(), P("~//b").Collapse()));
    EXPECT_EQ(cwd + "/n " + home + "/n " + home, Show(P::Cwd("n"), P::Home("n"), P::Home()));
    fs::remove(folder.Path());
    EXPECT_EQ("- n . x", Show(P::Cwd(), P::Cwd("n"), P(".").Abs(), P("./x/").Abs()));
}

TEST(Pathname, IsRewrittenByRules) {
    char const* const rows[][3] = {{"xay", "|a|b|", "0 by"},   {"xyz", "#a#b#", "1 xyz"},
                                   {"xay", "#a", "0 y"},       {"xa", "#a", "0 "},
                                   {"xay", nullptr, "1 xay"},  {"xay", "#^x#b#", "1 xay"},
                                   {"xay", "#y$#b#", "1 xay"}, {"xaay", "#a\\{2\\}#b#c", "0 by"},
                                   {nullptr, "#a#b#", "1 -"},  {"xay", "##b#", "0 bxay"}};
    for (auto const& row : rows) {
        P path(row[0]);
        std::string const result = std::to_string(path.ApplySubst(row[1]));
        EXPECT_EQ(row[2], result + ' ' + Show(path));
    }
    P path("xay");
    testing::internal::CaptureStderr();
    EXPECT_TRUE(path.ApplySubst("#a[#b#") == 0 && path == "xay");
    EXPECT_EQ(Regexp("a[").ErrorString() + "\n", testing::internal::GetCapturedStderr().c_str());

    TOList<String_t> rules;
    for (char const* rule : {"#nowhere#x#", "#/b#/../c#", "#c#d#"}) rules.Append(rule);
    EXPECT_EQ("/../c/e", Show(P("/a/./b/e").Abs(rules))) << "the first match, not collapsed";
}

TEST(Pathname, MakesAndFindsDirectories) {
    FreshFolder const folder;
    close(creat("file", 0600));
    std::string const absolute = folder.Path() / "e/f", long_name(300, 'n');
    std::pair<char const*, int> const rows[] = {{"a/b//c/../d/", 0},
                                                {"a/b/d", 0},
                                                {".", 0},
                                                {"..", 0},
                                                {"x/..", 0},
                                                {absolute.c_str(), 0},
                                                {"", -EINVAL},
                                                {nullptr, -EINVAL},
                                                {"file/x/y", -ENOTDIR},
                                                {"file", 0},
                                                {long_name.c_str(), -ENAMETOOLONG}};
    for (auto const& row : rows) EXPECT_EQ(row.second, P::Mkdir(P(row.first), 0700)) << row.first;
    EXPECT_EQ(0700u, unsigned(fs::status("a/b/d").permissions()));
    for (auto const& row : {std::pair("g/h/file", 0), {"/x", -EINVAL}, {"x", 0}})
        EXPECT_EQ(row.second, P::MkLeadingDirs(P(row.first), 0700)) << row.first;
    EXPECT_TRUE(fs::is_empty("g/h") && !fs::exists("a/b/c") && !fs::exists("x"));

    TOList<String_t> found;
    found.Append("old");
    EXPECT_EQ(3, P::Glob(P("[a-g]"), GLOB_MARK, found));
    EXPECT_EQ(-GLOB_NOMATCH, P::Glob(P(), 0, found));
    EXPECT_EQ("old a/ e/ g/", Concat(found, ' '));
}

}  // namespace
