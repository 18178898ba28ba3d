#include "system/bio.h"

#include <korbase_assert.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>

#include "text/str_text.h"

FILE* bio_open(char const* name, int len) {
    char path[256] = "";
    str_lcpy(path, name, static_cast<unsigned>(std::clamp(len, 0, 256)));
    FILE* const file = fopen(path, "r+");
    return file ? file : fopen(path, "w+");
}

int bio_close(FILE* file) {
    fflush(file);
    return fclose(file);
}

FILE* bio_popen(char const* command, int flag) {
    KORBASE_ASSERT(0 <= flag && flag < 2);
    return popen(command, flag == 0 ? "r" : "w");
}

int bio_pclose(FILE* file) { return pclose(file); }

void bio_reset(FILE* file) { rewind(file); }

int bio_rewrite(FILE* file) {
    rewind(file);
    return ftruncate(fileno(file), 0);
}

int bio_eof(FILE* file) {
    int const c = getc(file);
    if (feof(file)) return 1;
    ungetc(c, file);
    return 0;
}

void bio_put(FILE* file, char const* data, int n) {
    if (n > 0) (void)!fwrite(data, 1, static_cast<std::size_t>(n), file);
}

int bio_get(FILE* file, char* data, int n) {
    return n > 0 ? static_cast<int>(fread(data, 1, static_cast<std::size_t>(n), file)) : 0;
}
