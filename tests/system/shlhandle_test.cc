#include "system/shlhandle.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "system/tempfile.h"

namespace {

namespace fs = std::filesystem;

// A fresh folder with copies of the probe library in folders of their own.
class Shl : public testing::Test {
protected:
    Shl() {
        for (char const* copy : {"b/probe.so", "c/probe.so", "c/libm.so.6", "d/other.so"}) {
            fs::create_directory(fs::path(Path(copy)).parent_path());
            fs::copy_file(SHL_PROBE, Path(copy));
        }
    }
    std::string Path(char const* name) const { return std::string(root.Path()) + '/' + name; }
    // Has the library count in `ended` when it goes.
    void CountEnd(ShlHandle const& shl) { *static_cast<int**>(shl.FindSym("on_unload")) = &ended; }

    TempDir root;
    int ended = 0;
};

TEST_F(Shl, SearchesTheFoldersInOrder) {
    std::string const path = Path("a") + ":," + Path("b") + "," + Path("c") + ":" + Path("d");
    std::string const rows[][3] = {{"probe.so", path, Path("b/probe.so")},
                                   {"other.so", path, Path("d/other.so")},
                                   {Path("c/probe.so"), path, Path("c/probe.so")},
                                   {Path("b/probe.so").substr(1), "/", Path("b/probe.so")},
                                   {"missing.so", path, ""},
                                   {"probe.so", ":,", ""}};
    for (auto const& [name, folders, found] : rows) {
        ShlHandle shl;
        EXPECT_EQ(found.empty() ? -22 : 0, shl.Load(name.c_str(), folders.c_str()));
        Dl_info info = {};
        void* const symbol = shl.FindSym("on_unload");
        EXPECT_EQ(found, symbol && dladdr(symbol, &info) ? info.dli_fname : "") << name;
    }
    EXPECT_EQ(-22, ShlHandle().Load("probe.so", nullptr));
    ShlHandle const system("libm.so.6", Path("c").c_str());  // the loader finds its own first
    EXPECT_TRUE(system.FindSym("cos") && !system.FindSym("on_unload"));
    EXPECT_EQ(nullptr, ShlHandle().FindSym("cos"));
}

TEST_F(Shl, HasOneOwnerAndLoadForgetsWhatWasLoaded) {
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

    shl_t again = shl_load(Path("b/probe.so").c_str(), -1);
    void* missing = &again;
    EXPECT_TRUE(shl_findsym(&again, "missing", 7, &missing) == 0 && !missing);
    CountEnd(outer = ShlHandle(Path("b/probe.so").c_str(), nullptr));
    EXPECT_EQ(-22, outer.Load("missing.so", root.Path()));
    EXPECT_FALSE(outer.IsLoaded());
    EXPECT_TRUE(shl_unload(again) == 0 && ended == 3);  // the forgotten one still counts
    EXPECT_TRUE(shl_unload(again) == 0 && ended == 4);
}

}  // namespace
