#include "exchange/pipeline.h"

#include <utility>

#include "exchange/messages.h"

namespace exchange {
namespace {

constexpr unsigned kRequestBytes = kMaxUnanswered / 2;
constexpr std::size_t kMaxItems = std::size_t{4} * kMaxRecords;

}  // namespace

bool Pipeline::Reserve(layout::Item const& item) {
    if (items.size() == kMaxItems) return false;
    bool const fits =
        !item.IsShape() || next.records == 0 ||
        (next.records < kMaxRecords && next.bytes + RecordBytes(item.record) <= kRequestBytes);
    if (fits) return true;
    if (!MaySend()) return false;
    Send();
    return true;
}

void Pipeline::Put(layout::Item&& item) {
    if (item.IsShape()) {
        ++next.records;
        next.bytes += RecordBytes(item.record);
    }
    items.push_back(std::move(item));
}

bool Pipeline::MaySend() const {
    return sent.empty() || (sent.size() == 1 && sent.front().bytes + next.bytes <= kMaxUnanswered);
}

void Pipeline::Send() {
    OSockStream& out = server.Out();
    out << static_cast<int>(next.records);
    for (; unsent < items.size(); ++unsent)
        if (items[unsent].IsShape()) WriteRecord(out, items[unsent].record, distance);
    out << endm;
    sent.push_back(std::exchange(next, Request()));
}

layout::Item Pipeline::Take(layout::Shape& shape) {
    layout::Item& first = items.front();
    if (first.IsShape()) {
        if (sent.empty()) Send();
        ReadAnswer(server.In(), first.record, shape, first.problem);
        if (--sent.front().records == 0) sent.pop_front();
    }
    layout::Item item = std::move(first);
    items.pop_front();
    if (unsent > 0) --unsent;
    return item;
}

}  // namespace exchange
