// The messages between a fracture server and its clients. docs/wire-format.md tells their bytes and
// every limit.
//
// The streams must have all bits in their exception mask: what does not come, or cannot be sent,
// throws the matching SockIO exception, and so does a value beyond its limit (ProtocolError),
// before anything is allocated because of it.
#ifndef KORBASE_EXAMPLES_EXCHANGE_MESSAGES_H
#define KORBASE_EXAMPLES_EXCHANGE_MESSAGES_H

#include <geometry/gu_types.h>
#include <net/sockstream.h>
#include <text/string.h>

#include "layout/reader.h"
#include "layout/shape.h"

namespace exchange {

// What a client wants: a shape cut, the server to end, or nothing more, since it has closed.
enum class Request { kCut, kStop, kNothing };

// A polygon, a path or a circle, as a layout reader gives it, without its layer.
void WriteRecord(OSockStream& out, layout::Record const& record, gu_coord_t distance);
// What WriteRecord puts into a stream, in bytes.
unsigned RecordBytes(layout::Record const& record);
// Takes the next request; one for a shape fills in `record` and `distance`.
Request ReadRequest(ISockStream& in, layout::Record& record, gu_coord_t& distance);

// What the shape of a record became, or if `problem` is not null, why nothing.
void WriteAnswer(OSockStream& out, layout::Shape const& shape, char const* problem);
// The answer to `record`: fills in `shape`, but for its measures, or `problem`.
void ReadAnswer(ISockStream& in, layout::Record const& record, layout::Shape& shape,
                String_t& problem);

// The request to end, which is its own answer.
void WriteStop(OSockStream& out);
void ReadStop(ISockStream& in);

}  // namespace exchange

#endif
