// Calendar fields in local time.
#ifndef KORBASE_SYSTEM_LOCAL_TIME_H
#define KORBASE_SYSTEM_LOCAL_TIME_H

#include <time.h>

namespace korbase_detail {

// False when the year does not fit. Follows changes of TZ, as localtime() does, without its buffer.
inline bool LocalTime(time_t seconds, struct tm& fields) {
    tzset();
    return localtime_r(&seconds, &fields) != nullptr;
}

// The fields of this moment.
inline struct tm LocalTimeNow() {
    struct tm fields = {};
    LocalTime(time(nullptr), fields);
    return fields;
}

}  // namespace korbase_detail

#endif
