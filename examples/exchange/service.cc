#include "exchange/service.h"

#include "exchange/connection.h"
#include "exchange/messages.h"

namespace exchange {
namespace {

// The number of records, kStop, or -1 at the end of the conversation.
int NextRequest(ISockStream& in) {
    try {
        return ReadRequest(in);
    } catch (SockIO::EndOfInput const&) {
        if (in.GCount() > 0) throw;
        return -1;
    }
}

}  // namespace

// Two streams, since one for both directions would send every answer alone, before it reads on.
bool Serve(int fd, unsigned seconds) {
    PrepareSocket(fd);
    OSockStream out(fd);
    ISockStream in(fd);
    for (SockStream* stream : {static_cast<SockStream*>(&out), static_cast<SockStream*>(&in)}) {
        stream->Exceptions(kAllErrors);
        stream->Timeout(seconds);
    }
    layout::Record record;
    layout::Shape shape;
    int records = 0;
    while ((records = NextRequest(in)) > kStop) {
        for (; records > 0; --records) {
            gu_coord_t const distance = ReadRecord(in, record);
            WriteAnswer(out, shape, shape.Make(record, distance));
        }
        out << endm;
    }
    if (records != kStop) return false;
    out << kStop << endm;
    return true;
}

}  // namespace exchange
