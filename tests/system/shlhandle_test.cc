#include "system/shlhandle.h"

#include <dlfcn.h>

#include "tests/system/processes.h"

using Shl = ProcessTest;

TEST_F(Shl, SearchesTheFoldersInOrder) {
    for (char const* copy : {"b", "c"}) fs::create_directory(copy);
    for (char const* copy : {"b/probe.so", "c/probe.so"}) fs::copy_file(SHL_PROBE, copy);
    std::string const path = "./a:,./b,./c", root = folder.Path();
    std::string const rows[][3] = {{"probe.so", path, "./b/probe.so"},
                                   {root.substr(1) + "/b/probe.so", "/", root + "/b/probe.so"},
                                   {"probe.so", ":,", ""}};
    for (auto const& [name, folders, found] : rows) {
        ShlHandle shl;
        EXPECT_EQ(found.empty() ? -22 : 0, shl.Load(name.c_str(), folders.c_str()));
        Dl_info info = {};
        void* const symbol = shl.FindSym("on_unload");
        EXPECT_EQ(found, symbol && dladdr(symbol, &info) ? info.dli_fname : "") << name;
    }
}

TEST_F(Shl, HasOneOwnerAndLoadForgetsWhatWasLoaded) {
    fs::copy_file(SHL_PROBE, "probe.so");
    ShlHandle first("./probe.so", nullptr), second(first);
    int ended = 0;
    auto const watch = [&] { *static_cast<int**>(first.FindSym("on_unload")) = &ended; };
    first = second;
    watch();
    EXPECT_TRUE(first.IsLoaded() && !second.IsLoaded() && ended == 0);
    first = second;
    EXPECT_EQ(1, ended);  // by the assignment
    shl_t again = shl_load("./probe.so", -1);
    first = ShlHandle("./probe.so", nullptr);
    watch();
    EXPECT_TRUE(first.Load("missing.so", ".") == -22 && !first.IsLoaded());
    EXPECT_TRUE(shl_unload(again) == 0 && ended == 1);  // still counts
    EXPECT_TRUE(shl_unload(again) == 0 && ended == 2);
}
