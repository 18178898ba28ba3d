#include "system/shlhandle.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

namespace fs = std::filesystem;

// A fresh folder with copies of the probe library in folders of their own.
class Shl : public testing::Test {
protected:
    void SetUp() override {
        char name[] = "/tmp/shl_test.XXXXXX";
        ASSERT_NE(nullptr, mkdtemp(name));
        root = name;
        for (char const* copy : {"b/probe.so", "c/probe.so", "c/libm.so.6", "d/other.so"}) {
            fs::create_directories((root / copy).parent_path());
            fs::copy_file(SHL_PROBE, root / copy);
        }
        fs::create_directory(root / "a");
    }
    void TearDown() override { fs::remove_all(root); }
    std::string Path(char const* name) const { return root / name; }

    // The path by which Load loads a library, "" for none.
    static std::string Found(std::string const& name, std::string const& search_path) {
        ShlHandle shl;
        int const result = shl.Load(name.c_str(), search_path.c_str());
        EXPECT_EQ(shl.IsLoaded() ? 0 : -22, result) << name;
        Dl_info info = {};
        void* const symbol = shl.FindSym("on_unload");
        return symbol && dladdr(symbol, &info) ? info.dli_fname : "";
    }
    // Has the library count in `ended` when it goes.
    void CountEnd(ShlHandle const& shl) { *static_cast<int**>(shl.FindSym("on_unload")) = &ended; }

    fs::path root;
    int ended = 0;
};

TEST_F(Shl, SearchesTheFoldersInOrder) {
    std::string const path = Path("a") + ":," + Path("b") + "," + Path("c") + ":" + Path("d");
    EXPECT_EQ(Path("b/probe.so"), Found("probe.so", path));
    EXPECT_EQ(Path("d/other.so"), Found("other.so", path));
    EXPECT_EQ(Path("c/probe.so"), Found(Path("c/probe.so"), path));
    EXPECT_EQ(Path("b/probe.so"), Found(Path("b/probe.so").substr(1), "/"));
    EXPECT_EQ("", Found("missing.so", path));
    EXPECT_EQ("", Found("probe.so", ":,"));
    EXPECT_EQ(-22, ShlHandle().Load("probe.so", nullptr));

    ShlHandle const system("libm.so.6", Path("c").c_str());  // the loader finds its own first
    EXPECT_TRUE(system.FindSym("cos") && !system.FindSym("on_unload"));
    EXPECT_EQ(nullptr, ShlHandle().FindSym("cos"));
}

TEST_F(Shl, HasOneOwnerAtATime) {
    ShlHandle outer;
    {
        ShlHandle first(Path("b/probe.so").c_str(), nullptr), second(first);
        CountEnd(second);
        outer = second;
        outer = static_cast<ShlHandle&>(outer);
        EXPECT_TRUE(!first.IsLoaded() && !second.IsLoaded());
    }
    EXPECT_TRUE(outer.IsLoaded() && ended == 0);
    CountEnd(outer = ShlHandle(Path("c/probe.so").c_str(), nullptr));
    EXPECT_EQ(1, ended);  // by the assignment
    outer.Unload();
    outer.Unload();
    EXPECT_TRUE(!outer.IsLoaded() && ended == 2);
    CountEnd(outer = ShlHandle(Path("d/other.so").c_str(), nullptr));
    EXPECT_TRUE(ShlHandle(std::move(outer)).IsLoaded());
    EXPECT_EQ(3, ended);  // by the destructor
}

TEST_F(Shl, LoadForgetsWhatWasLoaded) {
    shl_t again = shl_load(Path("b/probe.so").c_str(), -1);
    void* missing = &again;
    EXPECT_TRUE(shl_findsym(&again, "missing", 7, &missing) == 0 && !missing);
    ShlHandle shl(Path("b/probe.so").c_str(), nullptr);
    CountEnd(shl);
    EXPECT_EQ(-22, shl.Load("missing.so", root.c_str()));
    EXPECT_FALSE(shl.IsLoaded());
    EXPECT_TRUE(shl_unload(again) == 0 && ended == 0);  // the forgotten one still counts
    EXPECT_TRUE(shl_unload(again) == 0 && ended == 1);
}

}  // namespace
