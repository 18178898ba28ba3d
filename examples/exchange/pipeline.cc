#include "exchange/pipeline.h"

#include <utility>

#include "exchange/messages.h"

namespace exchange {
namespace {

// Items that are not sent take a share, too, so that their number is limited.
unsigned BytesOf(layout::Item const& item) {
    return item.IsShape() ? RecordBytes(item.record) : 16;
}

}  // namespace

bool Pipeline::HasRoomFor(layout::Item const& item) const {
    return items.empty() || bytes + BytesOf(item) <= kMaxUnanswered;
}

void Pipeline::Put(layout::Item&& item) {
    bytes += BytesOf(item);
    if (item.IsShape()) WriteRecord(server.Out(), item.record, distance);
    items.push_back(std::move(item));
}

layout::Item Pipeline::Take(layout::Shape& shape) {
    layout::Item item = std::move(items.front());
    items.pop_front();
    bytes -= BytesOf(item);
    if (item.IsShape()) ReadAnswer(server.In(), item.record, shape, item.problem);
    return item;
}

}  // namespace exchange
