// Has a server cut shapes while more of them are on their way: requests go out before the answers
// to earlier ones have come, so that client and server work at the same time.
//
// Requests hold up to 1024 records and 16 KiB, or one larger record. Up to two are without answer.
//
// Why both ends cannot wait for each other: the server reads a whole record before it answers it,
// and waits with its answers only for us to read them. We write while we do not read, but only
// - a request of one record when nothing else is unanswered: the server reads all of it, since it
//   has nothing to write; or
// - up to kMaxUnanswered bytes, with all that is unanswered. They find room in the send buffer of
//   our socket even if the server reads none of them.
#ifndef KORBASE_EXAMPLES_EXCHANGE_PIPELINE_H
#define KORBASE_EXAMPLES_EXCHANGE_PIPELINE_H

#include <geometry/gu_types.h>

#include <cstddef>
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

    // Makes room for the item. False when an item has to be taken out first.
    bool Reserve(layout::Item const& item);
    // Takes an item for which there is room.
    void Put(layout::Item&& item);
    bool IsEmpty() const { return items.empty(); }
    // The oldest item, with `shape` filled in but for its measures, or with what is wrong with it.
    layout::Item Take(layout::Shape& shape);

private:
    struct Request {
        unsigned records = 0, bytes = 0;
    };

    bool MaySend() const;
    void Send();

    Connection& server;
    gu_coord_t distance;
    std::deque<layout::Item> items;  // first those of `sent`
    std::size_t unsent = 0;          // the first item that has not been sent, or no shape
    std::deque<Request> sent;        // at most two; of the first one, the records without answer
    Request next;                    // what is collected
};

}  // namespace exchange

#endif
