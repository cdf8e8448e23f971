// The driver of a clip: reads two polygons, runs, and when a run finds no consistent state does it all again with one
// polygon moved by an amount that doesn't matter to the caller but takes the outlines out of their degenerate
// position. The shift is not taken back.
#include <algorithm>
#include <cmath>
#include <memory>

#include <geometry/clip/polygon_clip_base.h>

#include "clip/attempts.h"
#include "clip/frame.h"
#include "polygon/polygon_tools.h"
#include "report/reporting.h"

namespace geometry
{

namespace
{

constexpr int numberOfAttempts = 12;
constexpr double shiftDivisor = 1e11;
constexpr double largestShiftPart = 1.001e-6; // of the smaller side of either polygon
constexpr double arcReach = 1e15;             // one unit in the last place is a tenth here
constexpr double powersOfTen[] = {1.0, 10.0, 100.0, 1000.0, 10000.0, 100000.0};

using AddPathHelper = CPolygonClipBase<double>::CAddPathHelper;

/// An outline with arcs at coordinates where these are noise: cuts would breed cuts without end.
bool IsArcTooFarOut(CPolygon const & polygon)
{
    CBoundingRect<double> const & rect = polygon.GetBoundingRect();
    double const reach =
        std::max({std::fabs(rect.minX), std::fabs(rect.minY), std::fabs(rect.maxX), std::fabs(rect.maxY)});
    auto const & outline = polygon.GetOutline();
    return !(reach <= arcReach) &&
           std::any_of(outline.begin(), outline.end(),
                       [](CPathObjectBase const* object) { return !object->CanAppendVertex(); });
}

/// Where two outlines can meet: the rectangle that both share, or has no area where they are apart.
CBoundingRect<double> CommonRect(CBoundingRect<double> const & a, CBoundingRect<double> const & b)
{
    CBoundingRect<double> common;
    common.Include(TPoint<double>(std::max(a.minX, b.minX), std::max(a.minY, b.minY)));
    common.Include(TPoint<double>(std::min(a.maxX, b.maxX), std::min(a.maxY, b.maxY)));
    return common;
}

double SmallerSide(CPolygon const & polygon)
{
    CBoundingRect<double> const & rect = polygon.GetBoundingRect();
    return std::max(std::min(rect.maxX - rect.minX, rect.maxY - rect.minY), 0.0);
}

/// Offers every valid object of the outline to `add`; `winding` is written if there is one.
template <typename Add>
void ReadOutline(CPolygon const & polygon, int & winding, Add add)
{
    bool isAnyAdded = false;
    for (CPathObjectBase const* object : polygon.GetOutline())
    {
        if (object->IsValid())
        {
            add(object);
            isAnyAdded = true;
        }
    }
    if (isAnyAdded)
    {
        winding = CPolygonInternals::GetWindingDirection(polygon) == CPolygon::eWindingNegative ? 0 : 1;
    }
}

void AddPolygonToRing(CPolygon const & polygon, AddPathHelper & helper, int & winding)
{
    ReadOutline(polygon, winding, [&](CPathObjectBase const* object) { helper.AddPathObject(object); });
}

void AddPerturbedPolygonToRing(CPolygon const & polygon, AddPathHelper & helper, int & winding, double const & dx,
                               double const & dy, bool correct)
{
    ReadOutline(polygon, winding,
                [&](CPathObjectBase const* object) { helper.AddPathObject(object, dx, dy, correct); });
}

} // namespace

TPoint<double> ShiftOfAttempt(CBoundingRect<double> const & rect, int attempt)
{
    double const width = std::max(rect.maxX - rect.minX, 0.0);
    double const height = std::max(rect.maxY - rect.minY, 0.0);
    double const base = std::min(height, width) / shiftDivisor;
    double const dx = base * powersOfTen[(attempt - 1) / 2];
    double const dy = attempt == 1 ? 0.0 : base * powersOfTen[(attempt - 2) / 2];
    return TPoint<double>(dx, dy);
}

template <typename T>
CPolygonClipBase<T>::~CPolygonClipBase() = default;

template <typename T>
typename CPolygonClipBase<T>::EClipResult CPolygonClipBase<T>::RunCoincident(CPolygon const & second)
{
    Clear();
    m_Status = second.GetOutline().empty() ? eStatusBothEmptyOrGaveUp : eStatusCoincident;
    if (m_Operation == eClipRelationOnly)
    {
        return eClipResultReady;
    }
    std::unique_ptr<CAddPathHelper> const helper(CreateSubjectPathHelper());
    AddPolygonToRing(second, *helper, m_SubjectWinding);
    return CopySubjectToResult();
}

template <typename T>
void CPolygonClipBase<T>::ReadPolygons(CPolygon const & first, CPolygon const & second, TPoint<double> const & shift,
                                       int attempt)
{
    std::unique_ptr<CAddPathHelper> const clipHelper(CreateClipPathHelper());
    std::unique_ptr<CAddPathHelper> const subjectHelper(CreateSubjectPathHelper());
    if (attempt == 0)
    {
        AddPolygonToRing(first, *clipHelper, m_ClipWinding);
        AddPolygonToRing(second, *subjectHelper, m_SubjectWinding);
        return;
    }
    m_LargestShift = std::max(m_LargestShift, std::hypot(shift.x, shift.y));
    bool const correct = attempt >= FirstRepairingAttempt;
    AddPerturbedPolygonToRing(first, *clipHelper, m_ClipWinding, shift.x, shift.y, correct);
    AddPerturbedPolygonToRing(second, *subjectHelper, m_SubjectWinding, 0.0, 0.0, correct);
}

/// Attempt after attempt, with shifts that go by the size of `measure`.
template <typename T>
typename CPolygonClipBase<T>::EClipResult
CPolygonClipBase<T>::RunAttempts(CPolygon const & first, CPolygon const & second, CPolygon const & measure)
{
    double const farthest = largestShiftPart * std::min(SmallerSide(first), SmallerSide(second));
    for (int attempt = 0; attempt < numberOfAttempts; ++attempt)
    {
        TPoint<double> const shift =
            attempt > 0 ? ShiftOfAttempt(measure.GetBoundingRect(), attempt) : TPoint<double>();
        if (std::max(shift.x, shift.y) > farthest)
        {
            break; // the smaller one would notice
        }
        Clear();
        ++m_Attempts;
        ReadPolygons(first, second, shift, attempt);
        EClipResult const result = Execute();
        if (result != eClipRetry)
        {
            return result;
        }
    }
    return eClipRetry;
}

/// The same attempts where the shapes are large: the distances within which points count as on an arc are absolute, and
/// no shift of a small shape gets beyond them.
template <typename T>
typename CPolygonClipBase<T>::EClipResult CPolygonClipBase<T>::RunAttemptsInFrame(CPolygon const & first,
                                                                                  CPolygon const & second)
{
    CFrame const frame({&first, &second});
    if (frame.IsPlain())
    {
        return eClipRetry;
    }
    std::unique_ptr<CPolygon> const framedFirst = frame.Enter(first, {});
    std::unique_ptr<CPolygon> const framedSecond = frame.Enter(second, {});
    double const largestShift = m_LargestShift;
    m_LargestShift = 0.0;
    bool const isFirstSmaller = SmallerSide(first) < SmallerSide(second);
    EClipResult const result = RunAttempts(*framedFirst, *framedSecond, isFirstSmaller ? *framedFirst : *framedSecond);
    m_LargestShift = std::max(largestShift, m_LargestShift / frame.GetScale());
    if (result == eClipResultReady)
    {
        OwningPolygonVector framed;
        GetResultPolygons(framed);
        OwningPolygonVector polygons;
        for (CPolygon const* polygon : framed)
        {
            PushPolygon(polygons, frame.Leave(*polygon));
            CPolygonInternals::Reverse(*polygons.back()); // which adding it undoes
        }
        Clear();
        AddResultPolygons(polygons);
    }
    return result;
}

template <typename T>
typename CPolygonClipBase<T>::EClipResult CPolygonClipBase<T>::RunClip(CPolygon const & first, CPolygon const & second)
{
    m_Attempts = 0;
    if (second.IsCoincidentWith(first))
    {
        return RunCoincident(second);
    }
    EClipResult result = eClipRetry;
    if (!IsArcTooFarOut(first) && !IsArcTooFarOut(second))
    {
        result = RunAttempts(first, second, first);
        result = result == eClipRetry ? RunAttemptsInFrame(first, second) : result;
    }
    if (result == eClipRetry)
    {
        m_Status = eStatusBothEmptyOrGaveUp;
        Report(CReport::eReasonUndecided, CommonRect(first.GetBoundingRect(), second.GetBoundingRect()));
    }
    return result;
}

template <typename T>
unsigned long long CPolygonClipBase<T>::GetGaveUpCount()
{
    return GetReportCount();
}

template class CPolygonClipBase<double>;

} // namespace geometry
