// Has a server cut shapes while more of them are on their way: records go out before the answers to
// earlier ones have come, so that client and server work at the same time.
//
// Why both ends cannot wait for each other: the server reads a whole record before it answers it,
// and waits with its answers only for us to read them. We write while we do not read, but only
// - a record when nothing else is unanswered: the server reads all of it, since it has nothing to
//   write; or
// - up to kMaxUnanswered bytes, with all that is unanswered. They find room in the send buffer of
//   our socket even if the server reads none of them.
#ifndef KORBASE_EXAMPLES_EXCHANGE_PIPELINE_H
#define KORBASE_EXAMPLES_EXCHANGE_PIPELINE_H

#include <geometry/gu_types.h>

#include <deque>

#include "exchange/connection.h"
#include "layout/report.h"
#include "layout/shape.h"

namespace exchange {

// Items come out in the order in which they went in; those that are no shapes pass through. Errors
// of the connection throw; after that nothing more is to be done with the pipeline.
class Pipeline {
public:
    Pipeline(Connection& server, gu_coord_t distance) : server(server), distance(distance) {}

    bool IsEmpty() const { return items.empty(); }
    // False when an item has to be taken out before this one is put in.
    bool HasRoomFor(layout::Item const& item) const;
    void Put(layout::Item&& item);
    // The oldest item, with `shape` filled in but for its measures, or with what is wrong with it.
    layout::Item Take(layout::Shape& shape);

private:
    Connection& server;
    gu_coord_t distance;
    std::deque<layout::Item> items;
    unsigned bytes = 0;  // of their records
};

}  // namespace exchange

#endif
