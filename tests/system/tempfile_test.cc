#include "system/tempfile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "system/regexp.h"
#include "tests/support/fresh_folder.h"
#include "tests/support/test.h"

namespace {

namespace fs = std::filesystem;

bool Looks(String_t const& name, char const* pattern) {
    return Regexp(("^" + String_t(pattern) + "$"), REG_EXTENDED).Match(name) == 0;
}

TEST(TmpFile, IsANameThatIsUnlinkedAtTheEnd) {
    fs::path name;
    {
        errno = 0;
        TmpFile file(".dat"), plain(nullptr);
        EXPECT_TRUE(errno == 0 && Looks(file.Name(), "/tmp/kor[A-Za-z0-9]{6}\\.dat"));
        EXPECT_TRUE(Looks(plain.Name(), "/tmp/kor[A-Za-z0-9]{6}")) << plain.Name();
        name = file.Name().Get();
        EXPECT_FALSE(fs::exists(name));
        WriteFile(name, "x");
        TmpFile const moved(std::move(file));
    }
    EXPECT_FALSE(fs::exists(name));
}

TEST(TempFile, IsOpenForThisUserAndGoesWithTheObject) {
    FreshFolder const folder;
    int fd = -1;
    {
        Pathname const dir(folder.Path().c_str());
        TempFile file(dir, "a.", ".b"), source(dir, nullptr, nullptr), target(dir, "t", "");
        EXPECT_EQ(folder.Path(), file.Path().Dir().Get());
        EXPECT_TRUE(Looks(file.Path().Leaf(), "a\\.[A-Za-z0-9]{12}\\.b")) << file.Path();
        EXPECT_EQ(0600u, unsigned(fs::status(file.Path().Get()).permissions()));
        fd = source.Fd();
        {
            TempFile moved(std::move(source));
            target = std::move(moved);
        }
        EXPECT_TRUE(target.Unlink() == 0 && target.Path() == "" && target.Unlink() == 0);
        char c = 0;
        EXPECT_TRUE(target.Fd() == fd && write(fd, "x", 1) == 1 && pread(fd, &c, 1, 0) == 1);
        EXPECT_TRUE(fs::remove(file.Path().Get()));
        EXPECT_TRUE(file.Unlink() == -1 && !file.Path().IsEmpty());
    }
    EXPECT_TRUE(fs::is_empty(folder.Path()) && fcntl(fd, F_GETFD) == -1);

    TempFile const none(Pathname("no such directory"), "a", "b");
    EXPECT_TRUE(errno == ENOENT && none.Path() == "" && none.Fd() == -1);
    EXPECT_TRUE(Looks(TempFile("kt", ".x").Path(), "/tmp/kt[A-Za-z0-9]{12}\\.x"));
}

// Links to files go without the file. Those to directories are followed and stay; loops end.
TEST(TempDir, GoesWithWhatIsInItAndFollowsLinks) {
    FreshFolder const folder;
    fs::path plain, linked;
    fs::create_directories("other/deep");
    for (char const* file : {"kept", "other/deep/file"}) WriteFile(file, "x");
    int const next = dup(0);
    close(next);
    {
        TempDir dir("kd", ".d"), second;
        EXPECT_TRUE(Looks(dir.Path(), "/tmp/kd[A-Za-z0-9]{12}\\.d")) << dir.Path();
        plain = dir.Path().Get();
        EXPECT_EQ(0700u, unsigned(fs::status(plain).permissions()));
        fs::create_directories(plain / "a/.c");
        for (char const* name : {".g", "a/.c/i"}) WriteFile(plain / name, "x");
        fs::create_symlink(folder.Path() / "kept", plain / "a/link");
        TempDir const moved(std::move(dir));

        linked = second.Path().Get();
        for (char const* name : {"gone/x", "real"}) fs::create_directories(linked / name);
        for (auto const& [to, name] : {std::pair("gone", "a"),
                                       {"gone", "b"},
                                       {"gone", "c"},
                                       {"gone", "d"},
                                       {"..", "real/up"},
                                       {"nowhere", "dangling"}})
            fs::create_symlink(to, linked / name);
        fs::create_symlink(folder.Path() / "other", linked / "out");
    }
    EXPECT_TRUE(!fs::exists(plain) && fs::exists("kept") && fs::is_empty("other"));
    EXPECT_FALSE(fs::exists(linked / "gone")) << "whether a link to it came first or not";
    for (char const* name : {"a", "out", "dangling", "real/up"})
        EXPECT_TRUE(fs::is_symlink(linked / name)) << name;
    fs::remove_all(linked);
    EXPECT_STREQ("", TempDir("no/such", "").Path());
    EXPECT_TRUE(dup(0) == next && close(next) == 0) << "a descriptor stayed open";
}

}  // namespace
