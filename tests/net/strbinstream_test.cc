#include "net/strbinstream.h"

#include "tests/support/test.h"

namespace {

TEST(StrBinStream, GrowsItsOwnMemoryByDoubling) {
    Rows<unsigned, unsigned, unsigned> const rows = {
        {16, 16, 16}, {16, 40, 64}, {0, 2, 4}, {1, 9000, 16384}};
    for (auto const& [size, length, capacity] : rows) {
        std::string const bytes(length, 'x');
        OStrBinStream out(size);
        out.Write(bytes.data(), static_cast<int>(length));
        EXPECT_EQ(length > 8192 ? 8192 : 0, out.Len());
        char const* const content = out.Str();
        EXPECT_EQ(bytes, std::string(content, out.Len()));
        EXPECT_EQ(capacity, out.Capacity()) << size << ' ' << length;
    }
}

TEST(StrBinStream, FillsFixedMemoryAndThenEnds) {
    char memory[9] = "--------";
    OStrBinStream(memory, 8).Write("x", 1);
    EXPECT_STREQ("--------", memory);  // what was not flushed is lost
    OStrBinStream out(memory, 8), empty(8), none(nullptr, 8);
    EXPECT_TRUE(out.Write("abcdefghijkl", 12).Flush() == 8 && out.Good());
    EXPECT_STREQ("abcdefgh", memory);
    EXPECT_TRUE(out.Flush() == 0 && out.Status() == SockStream::kEof && out.Flush() == -1);
    out.Exceptions(SockStream::kEof);
    EXPECT_THROW(out.Str(), SockIO::EndOfInput);
    EXPECT_TRUE(empty.Str() && empty.Status() == SockStream::kEof);
    EXPECT_TRUE(none.Flush() == -1 && none.Status() == SockStream::kBad);
}

TEST(StrBinStream, ReadsBackWhatWasWritten) {
    OStrBinStream out(16);
    int one = 0;
    out << 1;
    IStrBinStream in(out);
    in >> one;
    EXPECT_TRUE(in.Good() && one == 1 && in.Fill() == 0 && in.Status() == SockStream::kEof);
    in.Exceptions(SockStream::kEof);
    EXPECT_THROW(in.Fill(), SockIO::EndOfInput);

    for (unsigned const length : {0u, 8192u, 8193u}) {
        ByteString const bytes(length, 'b');
        IStrBinStream source(bytes);
        String_t line;
        source.Readln(line, nullptr);
        EXPECT_EQ(std::string(length, 'b'), line.Get());
    }
    EXPECT_EQ(0, IStrBinStream(nullptr, 5).Fill());
}

}  // namespace
