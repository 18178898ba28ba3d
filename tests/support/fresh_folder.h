// Files of a test: an empty folder that is the current one and is removed at the end of the scope,
// and whole files as texts.
#ifndef KORBASE_TESTS_SUPPORT_FRESH_FOLDER_H
#define KORBASE_TESTS_SUPPORT_FRESH_FOLDER_H

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>

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

inline std::string ReadFile(std::filesystem::path const& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

inline void WriteFile(std::filesystem::path const& file, std::string const& text) {
    std::ofstream(file, std::ios::binary) << text;
}

#endif
