#include "generic/tolist"

template class TOLink<String_t>;
template class TOList<String_t>;
