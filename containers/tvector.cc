#include "generic/tvector"

#include "text/string.h"

template class TVector<int>;
template class TVector<double>;
template class TVector<String_t>;
