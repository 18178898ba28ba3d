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
    struct {
        int flags;
        ios_base::openmode mode;
        bool ok;
    } const rows[] = {{O_RDONLY, in | ios_base::binary | ios_base::ate, true},
                      {O_WRONLY, out | ios_base::trunc, true},
                      {O_RDWR, in | out | ios_base::app, true},
                      {O_RDWR, none, false},
                      {O_RDWR, in | ios_base::trunc, false},
                      {O_RDONLY, out, false}};
    for (auto const& row : rows) {
        SCOPED_TRACE(&row - rows);
        int const fd = OpenFile(row.flags);
        {
            std::basic_fdfilebuf<char> buffer;
            EXPECT_EQ(-1, buffer.fd());
            EXPECT_EQ(row.ok ? &buffer : nullptr, buffer.attach(fd, row.mode));
            EXPECT_EQ(row.ok ? fd : -1, buffer.fd());
        }
        EXPECT_EQ(!row.ok, IsOpen(fd));  // what is refused is not owned
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
    EXPECT_FALSE(std::fdstream("file", ios_base::openmode()).is_open());
    EXPECT_TRUE(std::ifdstream("none").fail() && std::ifdstream(-1).fail());
    int ends[2];
    ASSERT_EQ(0, pipe(ends));
    close(ends[1]);
    std::ifdstream in;
    in.attach(ends[0], ios_base::ate);  // a pipe has no end
    EXPECT_TRUE(in.fail() && !in.is_open() && !IsOpen(ends[0]));

    int const first = OpenFile(O_RDONLY), second = dup(first);
    in.clear();
    in.attach(first);
    in.attach(second);
    EXPECT_TRUE(in.fail() && IsOpen(second) && in.rdbuf()->fd() == first);
    in.close();
    in.attach(second);
    EXPECT_TRUE(in.fail() && in.is_open());  // the state is the caller's to clear

    std::ofdstream out("/dev/full");
    out << "lost";
    out.close();
    EXPECT_TRUE(out.fail());
}
