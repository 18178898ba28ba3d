#include "system/tempfile.h"

#include "system/regexp.h"
#include "tests/system/processes.h"

using TempFiles = ProcessTest;

static bool Looks(String_t const& name, char const* pattern) {
    return Regexp(("^" + String_t(pattern) + "$"), REG_EXTENDED).Match(name) == 0;
}

TEST_F(TempFiles, AreNamesThatAreUnlinkedAtTheEnd) {
    fs::path name;
    {
        errno = 0;
        TmpFile file(".dat");
        EXPECT_TRUE(errno == 0 && Looks(file.Name(), "/tmp/kor[A-Za-z0-9]{6}\\.dat"));
        name = file.Name().Get();
        EXPECT_FALSE(fs::exists(name));
        WriteFile(name, "x");
        TmpFile const moved(std::move(file));
    }
    EXPECT_FALSE(fs::exists(name));
}

TEST_F(TempFiles, AreOpenForThisUserAndGoWithTheObject) {
    {
        Pathname const dir(folder.Path().c_str());
        TempFile file(dir, "a.", ".b"), source(dir, nullptr, nullptr), target(dir, "t", "");
        EXPECT_EQ(folder.Path(), file.Path().Dir().Get());
        EXPECT_TRUE(Looks(file.Path().Leaf(), "a\\.[A-Za-z0-9]{12}\\.b")) << file.Path();
        EXPECT_EQ(0600u, unsigned(fs::status(file.Path().Get()).permissions()));
        int const fd = source.Fd();
        TempFile moved(std::move(source));
        target = std::move(moved);
        EXPECT_TRUE(target.Unlink() == 0 && target.Path() == "" && target.Unlink() == 0);
        char c = 0;
        EXPECT_TRUE(target.Fd() == fd && write(fd, "x", 1) == 1 && pread(fd, &c, 1, 0) == 1);
        EXPECT_TRUE(fs::remove(file.Path().Get()));
        EXPECT_TRUE(file.Unlink() == -1 && !file.Path().IsEmpty());
    }
    EXPECT_TRUE(fs::is_empty(folder.Path()));

    TempFile const none(Pathname("no such directory"), "a", "b");
    EXPECT_TRUE(errno == ENOENT && none.Path() == "" && none.Fd() == -1);
    EXPECT_TRUE(Looks(TempFile("kt", ".x").Path(), "/tmp/kt[A-Za-z0-9]{12}\\.x"));
}

// Links to files go without the file. Those to directories are followed and stay; loops end.
TEST_F(TempFiles, DirectoriesGoWithWhatIsInThemAndFollowLinks) {
    fs::path plain, linked;
    fs::create_directories("other/deep");
    for (char const* file : {"kept", "other/deep/file"}) WriteFile(file, "x");
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
        for (char const* name : {"a", "b", "c", "d"}) fs::create_symlink("gone", linked / name);
        fs::create_symlink("..", linked / "real/up");
        fs::create_symlink("nowhere", linked / "dangling");
        fs::create_symlink(folder.Path() / "other", linked / "out");
    }
    EXPECT_TRUE(!fs::exists(plain) && fs::exists("kept") && fs::is_empty("other"));
    EXPECT_FALSE(fs::exists(linked / "gone")) << "whether a link to it came first or not";
    for (char const* name : {"a", "out", "dangling", "real/up"})
        EXPECT_TRUE(fs::is_symlink(linked / name)) << name;
    fs::remove_all(linked);
    EXPECT_STREQ("", TempDir("no/such", "").Path());
}
