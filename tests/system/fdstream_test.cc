#include "system/fdstream.h"

#include "tests/system/processes.h"

using std::ios_base;
using FdStream = ProcessTest;

TEST_F(FdStream, ReadsAndWritesWhereTheDescriptorStands) {
    WriteFile("file", "one\ntwo\n");
    int const fd = open("file", O_RDWR), other = open("file", O_RDWR);
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
    for (auto const mode : {ios_base::out, ios_base::in | ios_base::trunc}) {
        int const fd = open("/dev/null", O_RDONLY);
        EXPECT_EQ(nullptr, std::basic_fdfilebuf<char>().attach(fd, mode));
        EXPECT_EQ(0, close(fd));  // what is refused is not owned
    }
    std::ifdstream in("/dev/null");
    in.attach(0);
    EXPECT_TRUE(in.fail() && IsOpen(0));
    std::ofdstream out("/dev/full");
    out << "lost";
    out.close();
    EXPECT_TRUE(out.fail() && std::ifdstream("none").fail());
}
