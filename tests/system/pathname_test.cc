#include "system/pathname.h"

#include <glob.h>
#include <pwd.h>

#include "tests/system/processes.h"
#include "text/strlist.h"

using P = Pathname;
using PathnameFiles = ProcessTest;

// The texts with blanks between them; null is "-".
template <class... Text>
static std::string Show(Text const&... texts) {
    std::string all;
    for (String_t const& s : {String_t(texts)...}) all += s.IsNull() ? "- " : s + " ";
    return all.substr(0, all.size() - 1);
}

TEST(Pathname, IsCutIntoPiecesAndTakesExtensionsAndNames) {
    char const* const rows[][3] = {
        {nullptr, ".o", ". - - rel no - - - .o .o"},
        {"", ".o", ".   rel no .o .o .o .o .o"},
        {"/", "b", "  / abs no /b /b /b /b b//"},
        {"a/bc", "/bc", "a bc a rel has a/bc a/bc/bc a/bc/bc a/bc//bc /bc/a/bc"},
        {"a/.c", ".o", "a .c a/.c rel no a/.c.o a/.o a/.c a/.c/.o .o/a/.c"},
        {"~u/", "u/x", "~u  ~u/ abs no ~u/u/x ~u/u/x ~u/u/x ~u//u/x u/x/~u/"}};
    for (auto const& [name, arg, want] : rows) {
        P const p(name);
        EXPECT_EQ(want, Show(p.Dir(), p.Leaf(arg), p.Base(arg), p.IsAbs() ? "abs" : "rel",
                             p.HasExt(arg) ? "has" : "no", P(p).SetExt(arg), P(p).ChExt(arg),
                             P(name, arg), P(p).Append(arg), P(p).Insert(arg)));
    }
}

TEST(Pathname, SharesItsTextUntilItChanges) {
    char const* const rows[][2] = {
        {"C:\\D\\F", "/c:/d/f c:/d/f"}, {"d:", "/d:/ d:"}, {"\\C:", "/c: /c:"}};
    for (auto const& [name, want] : rows) {
        P path(name), copy(path);
        EXPECT_EQ(want, Show(path.Transform(), copy));
    }
    P const path("a/x.o");
    P copy(path);
    EXPECT_EQ(path.Get(), copy.ChExtOpt(".c").Get());
    copy.Append(copy).ChExt(copy.Get() + 8);
    EXPECT_EQ("a/x.o/a/xx.o a/x.o", Show(copy, path));
}

// The standard library's normal form keeps a last "/", and has "." where nothing is left.
static std::string Collapsed(std::string const& text) {
    std::string normal = fs::path(text).lexically_normal();
    while (normal.size() > 1 && normal.back() == '/') normal.pop_back();
    return normal == "." && text != "." ? "-" : normal;
}

TEST(Pathname, CollapsesLikeTheModel) {
    std::mt19937 random(1);
    for (int i = 0; i < 50000; ++i) {
        std::string const text = RandomText(random, 30, i % 2 ? "//..ab" : "/./.bcdefghijk");
        P const source(text.c_str());
        ASSERT_EQ(Collapsed(text) + ' ' + text, Show(P(source).Collapse(), source));
    }
}

TEST_F(PathnameFiles, PutTheRightDirectoryInFront) {
    std::string const cwd = fs::current_path(), home = getpwuid(getuid())->pw_dir,
                      root = getpwnam("root")->pw_dir;
    EXPECT_EQ(" /b " + cwd + "/x/y", Show(P("").Abs(), P("/a/../b/").Abs(), P("x/./y").Abs()));
    EXPECT_EQ(home + "/b " + root + "/x", Show(P("~/a/../b").Abs(), P("~root//x/").Abs()));
    EXPECT_EQ("~no such/../a - -", Show(P("~no such/../a").Abs(), P().Abs(), P().Collapse()));
    EXPECT_EQ(cwd + "/n " + home + "/n " + home, Show(P::Cwd("n"), P::Home("n"), P::Home()));
}

TEST(Pathname, IsRewrittenByRules) {
    char const* const rows[][3] = {{"xay", "|a|b|", "0 by"},          {"xay", "#a", "0 y"},
                                   {"xay", "#^x#b#", "1 xay"},        {"xay", "#y$#b#", "1 xay"},
                                   {"xaay", "#a\\{2\\}#b#c", "0 by"}, {"xay", "#a[#b#", "0 xay"}};
    for (auto const& [name, rule, want] : rows) {
        P path(name);
        int const result = path.ApplySubst(rule);
        EXPECT_EQ(want, Show(std::to_string(result).c_str(), path));
    }
    TOList<String_t> rules;
    for (char const* rule : {"#nowhere#x#", "#/b#/../c#", "#c#d#"}) rules.Append(rule);
    EXPECT_EQ("/../c/e", Show(P("/a/./b/e").Abs(rules))) << "the first match, not collapsed";
}

TEST_F(PathnameFiles, MakeAndFindDirectories) {
    WriteFile("file", "");
    std::string const absolute = folder.Path() / "e/f";
    for (char const* name : {"a/b//c/../d/", "a/b/d", ".", "x/..", absolute.c_str(), "file"})
        EXPECT_EQ(0, P::Mkdir(P(name), 0700)) << name;
    EXPECT_EQ(-ENOTDIR, P::Mkdir(P("file/x/y"), 0700));
    EXPECT_EQ(0, P::MkLeadingDirs(P("g/h/file"), 0700));
    EXPECT_EQ(0700u, unsigned(fs::status("a/b/d").permissions()));
    EXPECT_TRUE(fs::is_empty("g/h") && !fs::exists("a/b/c"));
    TOList<String_t> found;
    EXPECT_TRUE(P::Glob(P("[a-f]"), GLOB_MARK, found) == 2 && P::Glob(P("g"), 0, found) == 1);
    EXPECT_TRUE(P::Glob(P(), 0, found) == -GLOB_NOMATCH && Concat(found, ' ') == "a/ e/ g");
}
