// An empty folder that is the current one, and is removed at the end of the scope.
#ifndef KORBASE_TESTS_SUPPORT_FRESH_FOLDER_H
#define KORBASE_TESTS_SUPPORT_FRESH_FOLDER_H

#include <stdlib.h>

#include <filesystem>

class FreshFolder {
public:
    FreshFolder() : before(std::filesystem::current_path()) {
        char name[] = "/tmp/korbase_test.XXXXXX";
        std::filesystem::current_path(mkdtemp(name));
        path = name;
    }
    ~FreshFolder() {
        std::filesystem::current_path(before);
        std::filesystem::remove_all(path);
    }

    std::filesystem::path const& Path() const { return path; }

private:
    std::filesystem::path before, path;
};

#endif
