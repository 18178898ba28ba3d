#include "system/shlhandle.h"

#include <dlfcn.h>

#include "tests/support/fresh_folder.h"
#include "tests/support/test.h"

// Copies of the probe library in folders of their own.
class Shl : public testing::Test {
protected:
    Shl() {
        for (char const* copy : {"b/probe.so", "c/probe.so", "c/libm.so.6", "d/other.so"}) {
            std::filesystem::create_directory(std::string(copy, 1));
            std::filesystem::copy_file(SHL_PROBE, copy);
        }
    }
    // Has the library count in `ended` when it goes.
    void CountEnd(ShlHandle const& shl) { *static_cast<int**>(shl.FindSym("on_unload")) = &ended; }

    FreshFolder const folder;
    int ended = 0;
};

TEST_F(Shl, SearchesTheFoldersInOrder) {
    std::string const path = "./a:,./b,./c:./d", root = folder.Path();
    std::string const rows[][3] = {{"probe.so", path, "./b/probe.so"},
                                   {"other.so", path, "./d/other.so"},
                                   {"./c/probe.so", path, "./c/probe.so"},
                                   {root.substr(1) + "/b/probe.so", "/", root + "/b/probe.so"},
                                   {"probe.so", ":,", ""}};
    for (auto const& [name, folders, found] : rows) {
        ShlHandle shl;
        EXPECT_EQ(found.empty() ? -22 : 0, shl.Load(name.c_str(), folders.c_str()));
        Dl_info info = {};
        void* const symbol = shl.FindSym("on_unload");
        EXPECT_EQ(found, symbol && dladdr(symbol, &info) ? info.dli_fname : "") << name;
    }
    EXPECT_EQ(-22, ShlHandle().Load("probe.so", nullptr));
    EXPECT_TRUE(ShlHandle("libm.so.6", "./c").FindSym("cos"));  // the loader finds its own first
}

TEST_F(Shl, HasOneOwnerAndLoadForgetsWhatWasLoaded) {
    ShlHandle outer;
    {
        ShlHandle first("./b/probe.so", nullptr), second(first);
        CountEnd(second);
        outer = second;
        outer = static_cast<ShlHandle&>(outer);
        EXPECT_TRUE(!first.IsLoaded() && !second.IsLoaded());
    }
    EXPECT_TRUE(outer.IsLoaded() && ended == 0);
    CountEnd(outer = ShlHandle("./c/probe.so", nullptr));
    EXPECT_EQ(1, ended);  // by the assignment
    for (int i = 0; i < 2; ++i) outer.Unload();
    EXPECT_TRUE(!outer.IsLoaded() && ended == 2);
    CountEnd(outer = ShlHandle("./d/other.so", nullptr));
    EXPECT_TRUE(ShlHandle(std::move(outer)).IsLoaded());
    EXPECT_EQ(3, ended);  // by the destructor

    shl_t again = shl_load("./b/probe.so", -1);
    void* missing = &again;
    EXPECT_TRUE(shl_findsym(&again, "missing", 7, &missing) == 0 && !missing);
    CountEnd(outer = ShlHandle("./b/probe.so", nullptr));
    EXPECT_EQ(-22, outer.Load("missing.so", "."));
    EXPECT_TRUE(!outer.IsLoaded() && shl_unload(again) == 0 && ended == 3);  // still counts
    EXPECT_TRUE(shl_unload(again) == 0 && ended == 4);
}
