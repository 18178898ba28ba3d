#include "net/strbinstream.h"

#include "tests/support/test.h"

TEST(StrBinStream, GrowsByDoublingAndReadsBack) {
    Rows<unsigned, unsigned, unsigned> const rows = {{16, 16, 16},     {16, 40, 64},     {0, 2, 4},
                                                     {1, 8192, 16384}, {1, 9000, 16384}, {8, 0, 8}};
    for (auto const& [size, length, capacity] : rows) {
        std::string const bytes(length, 'x');
        OStrBinStream out(size);
        out.Write(bytes.data(), static_cast<int>(length));
        EXPECT_EQ(length > 8192 ? 8192 : 0, out.Len());
        char const* const content = out.Str();
        EXPECT_EQ(bytes, std::string(content, out.Len()));
        EXPECT_EQ(capacity, out.Capacity()) << size << ' ' << length;
        IStrBinStream in(out);
        String_t back;
        in.Readln(back, nullptr);
        EXPECT_TRUE(back == bytes.c_str() && in.Fill() == (length ? 0 : -1));
    }
}

TEST(StrBinStream, FillsFixedMemoryAndThenEnds) {
    char memory[9] = "--------";
    OStrBinStream out(memory, 8);
    EXPECT_TRUE(out.Write("abcdefghijkl", 12).Flush() == 8 && out.Good());
    EXPECT_STREQ("abcdefgh", memory);
    EXPECT_TRUE(out.Flush() == 0 && out.Status() == SockStream::kEof && out.Flush() == -1);
    out.Exceptions(SockStream::kEof);
    EXPECT_THROW(out.Str(), SockIO::EndOfInput);
}
