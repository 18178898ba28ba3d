#include "system/fdstream.h"

#include "tests/system/processes.h"

using std::ios_base;
using FdStream = ProcessTest;

static int OpenFile(int flags) {
    WriteFile("file", "one\ntwo\n");
    return open("file", flags);
}

TEST_F(FdStream, AttachesInModesThatFilesCanHave) {
    ios_base::openmode const in = ios_base::in, out = ios_base::out, none = {};
    Rows<int, ios_base::openmode, bool> const rows = {
        {O_RDONLY, in | ios_base::binary | ios_base::ate, true},
        {O_WRONLY, out | ios_base::trunc, true},
        {O_RDWR, none, false},
        {O_RDONLY, out, false}};
    for (auto const& [flags, mode, ok] : rows) {
        int const fd = OpenFile(flags);
        {
            std::basic_fdfilebuf<char> buffer;
            EXPECT_EQ(ok ? &buffer : nullptr, buffer.attach(fd, mode)) << mode;
            EXPECT_EQ(ok ? fd : -1, buffer.fd());
        }
        EXPECT_EQ(!ok, IsOpen(fd)) << mode;  // what is refused is not owned
        close(fd);
        EXPECT_EQ("one\ntwo\n", ReadFile("file"));
    }
}

TEST_F(FdStream, ReadsAndWritesWhereTheDescriptorStands) {
    int const fd = OpenFile(O_RDWR), other = open("file", O_RDWR);
    lseek(fd, 4, SEEK_SET);
    std::fdstream stream(fd);
    std::string word;
    EXPECT_TRUE(stream >> word && word == "two");
    stream.seekp(0);
    stream << "ONE";
    stream.close();
    EXPECT_TRUE(stream.good() && !stream.is_open() && !IsOpen(fd));
    {
        std::ofdstream end, append("file", ios_base::app);  // out is added
        end.attach(other, ios_base::in | ios_base::ate);
        end << "three\n" << std::flush;
        append << "four";
    }
    EXPECT_EQ("ONE\ntwo\nthree\nfour", ReadFile("file"));
}

TEST_F(FdStream, FailsWhereFilesDo) {
    EXPECT_TRUE(std::ifdstream("none").fail() && std::ifdstream(-1).fail());
    int ends[2];
    ASSERT_EQ(0, pipe(ends));
    std::ifdstream in;
    in.attach(ends[0], ios_base::ate);  // a pipe has no end
    EXPECT_TRUE(in.fail() && !in.is_open() && !IsOpen(ends[0]));
    in.clear();
    in.attach(OpenFile(O_RDONLY));
    in.attach(ends[1]);
    EXPECT_TRUE(in.fail() && close(ends[1]) == 0);
    in.close();
    in.attach(OpenFile(O_RDONLY));
    EXPECT_TRUE(in.fail() && in.is_open());  // the state is the caller's to clear

    std::ofdstream out("/dev/full");
    out << "lost";
    out.close();
    EXPECT_TRUE(out.fail());
}
