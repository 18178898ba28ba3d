// Everything public, for programs that want one include. C++ only: C programs include the headers
// they call.
#ifndef KORBASE_H
#define KORBASE_H

#include <korbase_api.h>
#include <korbase_assert.h>

#include <containers/avlnode.h>
#include <containers/bnode.h>
#include <containers/dlist.h>
#include <containers/dplist.h>
#include <containers/hash_index.h>
#include <containers/hash_records.h>
#include <containers/objectbase.h>
#include <containers/olist.h>
#include <containers/pool.h>
#include <containers/ring.h>
#include <containers/set.h>
#include <containers/slist.h>
#include <containers/varr.h>
#include <geometry/ctree_node.h>
#include <geometry/gu_angle.h>
#include <geometry/gu_arc.h>
#include <geometry/gu_intersection.h>
#include <geometry/gu_measure.h>
#include <geometry/gu_outline.h>
#include <geometry/gu_sizing.h>
#include <geometry/gu_trapezoids.h>
#include <geometry/gu_types.h>
#include <geometry/stroke.h>
#include <text/argumentvector.h>
#include <text/bytestring.h>
#include <text/except.h>
#include <text/format.h>
#include <text/memory.h>
#include <text/numeric.h>
#include <text/numread.h>
#include <text/options.h>
#include <text/str.h>
#include <text/str_accumulator.h>
#include <text/str_columns.h>
#include <text/str_engineering.h>
#include <text/str_field.h>
#include <text/str_integer.h>
#include <text/str_number.h>
#include <text/str_search.h>
#include <text/str_text.h>
#include <text/strfmt.h>
#include <text/string.h>
#include <text/stringsplitter.h>
#include <text/stringtok.h>
#include <text/strlist.h>
#include <text/urlcode.h>
#include <text/vars.h>
#include <generic/autoarr>
#include <generic/gohash>
#include <generic/gstringcmp>
#include <generic/mapkey>
#include <generic/tmap>
#include <generic/tolist>
#include <generic/tpair>
#include <generic/tshsort>
#include <generic/tsortedvector>
#include <generic/tvarr>
#include <generic/tvector>

#endif
