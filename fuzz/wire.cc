// Typed streams: the input says which types to read, then come the bytes of a peer. What could be
// read is written, read and written again: the two messages must be the same.
#include <korbase.h>

#include "input.h"

namespace {

// Reads a value of the type that `kind` says and writes it to `out` if that went well.
template <class Value>
bool Copy(ISockStream& in, OSockStream& out, Value value = Value()) {
    in >> value;
    if (in.Good()) out << value;
    return in.Good();
}

bool CopyAny(unsigned kind, ISockStream& in, OSockStream& out) {
    switch (kind % 14) {
        case 0: return Copy<char>(in, out);
        case 1: return Copy<short>(in, out);
        case 2: return Copy<int>(in, out);
        case 3: return Copy<long>(in, out);
        case 4: return Copy<unsigned long>(in, out);
        case 5: return Copy<long long>(in, out);
        case 6: return Copy<float>(in, out);
        case 7: return Copy<double>(in, out);
        case 8: return Copy<String_t>(in, out);
        case 9: return Copy<ByteString>(in, out);
        case 10: return Copy<TOList<String_t>>(in, out);
        case 11: {
            String_t line;
            in.Readln(line, "\r\n");
            if (in.Good()) out.Writeln(line, "\r\n");
            return in.Good();
        }
        case 12: {
            char line[5];
            in.Readln(line, sizeof line);
            EXPECT(std::strlen(line) < sizeof line);
            return in.Good();
        }
        default: in.GBump(static_cast<int>(kind) - 128); return in.Good();
    }
}

// The message of the values that the bytes hold, as far as they are good; `kinds` is cut there.
ByteString Message(std::string& kinds, void const* bytes, unsigned size) {
    IStrBinStream in(bytes, size);
    OStrBinStream out(16);
    std::size_t good = 0;
    while (good < kinds.size() && CopyAny(static_cast<unsigned char>(kinds[good]), in, out)) ++good;
    kinds.resize(good);
    char const* const text = out.Str();
    return ByteString(text, out.Len());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
    Input input(bytes, size);
    std::string kinds = input.Bytes(input.Take<std::uint8_t>() % 32U);
    std::string const received = input.Rest();
    ByteString const once = Message(kinds, received.data(), static_cast<unsigned>(received.size()));
    for (char const kind : kinds)
        if (static_cast<unsigned char>(kind) % 14 > 10) return 0;  // these copy no value
    std::size_t const count = kinds.size();
    ByteString const twice = Message(kinds, once.Get(), once.Len());
    EXPECT(kinds.size() == count);
    EXPECT(once.Len() == twice.Len() && once == twice);
    return 0;
}
