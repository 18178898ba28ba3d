#include "geometry/gu_intersection.h"

#include <algorithm>

#include "geometry/wrap.h"
#include "text/numeric.h"

using korbase_detail::Between;
using korbase_detail::Vector;
using korbase_detail::WrapAdd;

namespace {

// How the lines p + t * d1 and q + s * d2 lie to each other.
struct Solution {
    Vector d1, d2, pq;
    double det;        // 0: parallel
    double t;          // where they meet on the first line
    gu_point_t point;  // the end of the second line that lies on the first; only where det is 0
};

double Cross(Vector const& a, Vector const& b) { return a.y * b.x - b.y * a.x; }

bool InUnit(double t) { return 0 <= t && t <= 1; }

gu_point_t PointAt(gu_point_t const& origin, Vector const& d, double t) {
    return {WrapAdd(origin.x, mth_round(t * d.x)), WrapAdd(origin.y, mth_round(t * d.y))};
}

// Whether `point` lies on the first of two parallel lines, within its two points.
bool TakeEnd(Solution* s, gu_point_t const& p, gu_point_t const& point) {
    Vector const offset = Between(p, point);
    if (Cross(s->d1, offset) != 0) return false;
    double const t = s->d1.x != 0 ? offset.x / s->d1.x : offset.y / s->d1.y;
    if (!InUnit(t)) return false;
    s->t = t;
    s->point = point;
    return true;
}

bool Solve(gu_point_t const& p1, gu_point_t const& p2, gu_point_t const& q1, gu_point_t const& q2,
           Solution* s) {
    s->d1 = Between(p1, p2);
    s->d2 = Between(q1, q2);
    s->pq = Between(p1, q1);
    s->det = Cross(s->d1, s->d2);
    if (s->det != 0) {
        s->t = (s->d2.x * s->pq.y - s->pq.x * s->d2.y) / s->det;
        return true;
    }
    if (s->d1.x == 0 && s->d1.y == 0) return false;
    return TakeEnd(s, p1, q1) || TakeEnd(s, p1, q2);
}

bool BoxesApart(gu_point_t const& p1, gu_point_t const& p2, gu_point_t const& q1,
                gu_point_t const& q2) {
    return std::max(p1.x, p2.x) < std::min(q1.x, q2.x) ||
           std::max(p1.y, p2.y) < std::min(q1.y, q2.y) ||
           std::max(q1.x, q2.x) < std::min(p1.x, p2.x) ||
           std::max(q1.y, q2.y) < std::min(p1.y, p2.y);
}

}  // namespace

bool gu_line_intersection_l(gu_point_t const* p1, gu_point_t const* p2, gu_point_t const* q1,
                            gu_point_t const* q2, double* t, gu_point_t* out) {
    Solution s;
    if (!Solve(*p1, *p2, *q1, *q2, &s)) return false;
    *t = s.t;
    *out = PointAt(*p1, s.d1, s.t);
    return true;
}

int gu_line_intersection(gu_point_t const* p1, gu_point_t const* p2, gu_point_t const* q1,
                         gu_point_t const* q2, gu_point_t* out) {
    double t;
    return gu_line_intersection_l(p1, p2, q1, q2, &t, out);
}

int gu_intersection_l(gu_point_t const* p1, gu_point_t const* p2, gu_point_t const* q1,
                      gu_point_t const* q2, double* t, gu_point_t* out) {
    Solution s;
    if (BoxesApart(*p1, *p2, *q1, *q2)) return 0;
    if (!Solve(*p1, *p2, *q1, *q2, &s) || !InUnit(s.t)) return 0;
    if (s.det != 0) {
        double const on_second = (s.d1.x * s.pq.y - s.pq.x * s.d1.y) / s.det;
        if (!InUnit(on_second)) return 0;
        s.point = PointAt(*q1, s.d2, on_second);
    }
    *t = s.t;
    *out = s.point;
    return 1;
}

int gu_intersection(gu_point_t const* p1, gu_point_t const* p2, gu_point_t const* q1,
                    gu_point_t const* q2, gu_point_t* out) {
    double t;
    return gu_intersection_l(p1, p2, q1, q2, &t, out);
}
