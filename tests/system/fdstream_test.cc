#include "system/fdstream.h"

#include "processes.h"

using std::ios_base;

namespace {

class FdStream : public ProcessTest {
protected:
    // A descriptor on a file of "one\ntwo\n".
    int Open(int flags) {
        std::ofstream(path) << "one\ntwo\n";
        return open(path.c_str(), flags);
    }
};

}  // namespace

TEST_F(FdStream, AttachesInModesThatFilesCanHave) {
    ios_base::openmode const in = ios_base::in, out = ios_base::out, ate = ios_base::ate,
                             app = ios_base::app, trunc = ios_base::trunc, none = {};
    struct {
        int flags;
        ios_base::openmode mode;
        bool ok;
    } const rows[] = {{O_RDONLY, in | ios_base::binary | ate, true},
                      {O_WRONLY, out | trunc, true},
                      {O_RDWR, in | out | app, true},
                      {O_RDWR, none, false},
                      {O_RDWR, in | trunc, false},
                      {O_RDONLY, out, false}};
    for (auto const& row : rows) {
        SCOPED_TRACE(&row - rows);
        int const fd = Open(row.flags);
        {
            std::basic_fdfilebuf<char> buffer;
            EXPECT_EQ(-1, buffer.fd());
            EXPECT_EQ(row.ok ? &buffer : nullptr, buffer.attach(fd, row.mode));
            EXPECT_EQ(row.ok ? fd : -1, buffer.fd());
        }
        EXPECT_EQ(!row.ok, IsOpen(fd));  // what is refused is not owned
        close(fd);
        EXPECT_EQ("one\ntwo\n", ReadFile(path));
    }
}

TEST_F(FdStream, ReadsAndWritesWhereTheDescriptorStands) {
    int const fd = Open(O_RDWR), other = open(path.c_str(), O_RDWR);
    lseek(fd, 4, SEEK_SET);
    std::fdstream stream(fd);
    std::string word;
    EXPECT_TRUE(stream >> word && word == "two");
    stream.seekp(0);
    stream << "ONE";
    stream.close();
    EXPECT_TRUE(stream.good());
    EXPECT_FALSE(stream.is_open() || IsOpen(fd));
    {
        std::ofdstream end, append(path.c_str(), ios_base::app);  // out is added
        end.attach(other, ios_base::in | ios_base::ate);
        end << "three\n" << std::flush;
        append << "four";
    }
    EXPECT_EQ("ONE\ntwo\nthree\nfour", ReadFile(path));
}

TEST_F(FdStream, FailsWhereFilesDo) {
    EXPECT_FALSE(std::fdstream(path.c_str(), ios_base::openmode()).is_open());
    EXPECT_TRUE(std::ifdstream((path + "x").c_str()).fail() && std::ifdstream(-1).fail());
    int ends[2];
    ASSERT_EQ(0, pipe(ends));
    std::ifdstream in;
    in.attach(ends[0], ios_base::ate);  // a pipe has no end
    EXPECT_TRUE(in.fail());
    EXPECT_FALSE(in.is_open() || IsOpen(ends[0]));
    close(ends[1]);

    int const first = Open(O_RDONLY), second = dup(first);
    in.clear();
    in.attach(first);
    in.attach(second);
    EXPECT_TRUE(in.fail() && IsOpen(second));
    EXPECT_EQ(first, in.rdbuf()->fd());
    in.close();
    in.attach(second);
    EXPECT_TRUE(in.fail() && in.is_open());  // the state is the caller's to clear

    std::ofdstream out("/dev/full");
    out << "lost";
    out.close();
    EXPECT_TRUE(out.fail());
}
