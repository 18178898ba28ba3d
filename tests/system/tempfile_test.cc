#include "system/tempfile.h"

#include "system/fname.h"
#include "tests/system/processes.h"

using TempFiles = ProcessTest;

TEST_F(TempFiles, GoWithTheLastOwner) {
    fs::path name;
    {
        TmpFile tmp(".dat");
        EXPECT_EQ(0, fname_match("/tmp/kor??????.dat", tmp.Name()));
        name = tmp.Name().Get();
        WriteFile(name, "x");

        Pathname const dir(folder.Path().c_str());
        TempFile file(dir, "a.", ".b"), source(dir, nullptr, nullptr), target(dir, "t", "");
        EXPECT_EQ(0, fname_match("a.????????????.b", file.Path().Leaf())) << file.Path();
        EXPECT_EQ(0600u, unsigned(fs::status(file.Path().Get()).permissions()));
        int const fd = source.Fd();
        target = TempFile(std::move(source));
        EXPECT_TRUE(target.Unlink() == 0 && target.Path() == "" && target.Unlink() == 0);
        EXPECT_TRUE(target.Fd() == fd && write(fd, "x", 1) == 1);
    }
    EXPECT_TRUE(!fs::exists(name) && fs::is_empty(folder.Path()));
}

// Links to files go without the file. Those to directories are followed and stay; loops end.
TEST_F(TempFiles, DirectoriesGoWithWhatIsInThemAndFollowLinks) {
    fs::path path;
    fs::create_directories("other/deep");
    WriteFile("kept", "x");
    {
        TempDir dir("kd", ".d");
        path = dir.Path().Get();
        EXPECT_EQ(0700u, unsigned(fs::status(path).permissions()));
        fs::create_symlink(folder.Path() / "kept", path / "link");
        for (char const* name : {"gone/x/.c", "real"}) fs::create_directories(path / name);
        for (char const* name : {"a", "b", "c", "d"}) fs::create_symlink("gone", path / name);
        fs::create_symlink("..", path / "real/up");
        fs::create_symlink(folder.Path() / "other", path / "out");
    }
    EXPECT_TRUE(fs::exists("kept") && fs::is_empty("other"));
    EXPECT_TRUE(!fs::is_symlink(path / "link") && !fs::exists(path / "gone"))
        << "whether a link to it came first or not";
    for (char const* name : {"a", "out", "real/up"})
        EXPECT_TRUE(fs::is_symlink(path / name)) << name;
    fs::remove_all(path);
}
