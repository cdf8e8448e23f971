#include "proof/proved.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <geometry/thread/thread.h>

#include "clip/frame.h"

namespace geometry
{

namespace
{

/// Another way of doing the same.
struct TWay
{
    bool isFramed;
    double step;      ///< of the second inputs, as a part of the smallest side
    double direction; ///< of the first step, in radians; the others are turned on by the golden angle
};

constexpr std::array<TWay, 8> otherWays{{{true, 0.0, 0.0},
                                         {true, 3e-12, 0.7},
                                         {false, 7e-12, 2.9},
                                         {true, 2e-11, 4.1},
                                         {true, 5e-11, 5.3},
                                         {false, 1e-9, 1.9},
                                         {true, 3e-8, 3.5},
                                         {true, 4e-7, 0.1}}};

CBoundingRect<double> RectOf(TRegionTask const & task)
{
    CBoundingRect<double> rect;
    for (PolygonRange const* group : {&task.first, &task.second})
    {
        for (CPolygon const* polygon : *group)
        {
            rect.Include(polygon->GetBoundingRect());
        }
    }
    return rect;
}

/// Puts copies of `polygons` in the frame into `copies`, each moved by a step of its own.
void EnterAll(CFrame const & frame, PolygonRange const & polygons, double step, double direction,
              PolygonVector & copies)
{
    constexpr double goldenAngle = 2.39996322972865332;
    for (CPolygon const* polygon : polygons)
    {
        CBoundingRect<double> const & r = polygon->GetBoundingRect();
        double const length = step * std::max(std::min(r.maxX - r.minX, r.maxY - r.minY), 0.0) * frame.GetScale();
        TPoint<double> const shift(length * std::cos(direction), length * std::sin(direction));
        PushPolygon(copies, frame.Enter(*polygon, shift));
        direction += goldenAngle;
    }
}

/// True if the operation succeeded.
bool RunOtherWay(TRegionTask const & task, TWay const & way, PolygonVector & result, RegionRun const & run)
{
    PolygonRange all(task.first);
    all.insert(all.end(), task.second.begin(), task.second.end());
    CFrame const frame = way.isFramed ? CFrame(all) : CFrame();
    OwningPolygonVector first;
    OwningPolygonVector second;
    EnterAll(frame, task.first, 0.0, 0.0, first);
    EnterAll(frame, task.second, way.step, way.direction, second);
    OwningPolygonVector made;
    if (!run(PolygonRange(first.begin(), first.end()), PolygonRange(second.begin(), second.end()), made))
    {
        return false;
    }
    for (CPolygon const* polygon : made)
    {
        PushPolygon(result, frame.Leave(*polygon));
    }
    return true;
}

CBoundingRect<double> RectAt(TPoint<double> const & point)
{
    CBoundingRect<double> rect;
    rect.Include(point);
    return rect;
}

} // namespace

void ProveOrRetry(CReportTrial & trial, PolygonVector & made, CBoundingRect<double> const & place,
                  RegionJudge const & judge, std::size_t wayCount, RegionWay const & tryWay)
{
    auto const stop = [&]
    {
        bool const isStopped = this_thread::cancellation_requested();
        if (isStopped)
        {
            trial.PassOn();
            Report(CReport::eReasonStopped, place);
        }
        return isStopped;
    };
    if (stop())
    {
        return;
    }
    std::optional<TPoint<double>> const contradiction = judge(made);
    if (!contradiction && trial.IsComplete())
    {
        return;
    }
    for (std::size_t way = 0; way < wayCount; ++way)
    {
        OwningPolygonVector other;
        {
            CReportTrial const otherTrial;
            if (tryWay(way, other) && otherTrial.IsComplete() && !judge(other))
            {
                made.swap(other);
                return;
            }
        }
        if (stop())
        {
            return;
        }
    }
    trial.PassOn();
    if (contradiction)
    {
        Report(CReport::eReasonContradicted, RectAt(*contradiction));
    }
}

bool RunProved(TRegionTask const & task, PolygonVector & result, RegionRun const & run)
{
    CRunningOperation const running(task.operation);
    if (!running.IsOuter())
    {
        return run(task.first, task.second, result);
    }
    CReportTrial trial;
    OwningPolygonVector made;
    bool const isDone = run(task.first, task.second, made);
    if (!isDone && !this_thread::cancellation_requested())
    {
        trial.PassOn();
    }
    else
    {
        CRegionJudge judge(task.first, task.second, task.isMember);
        ProveOrRetry(
            trial, made, RectOf(task),
            [&](PolygonVector const & polygons) { return judge.FindContradiction(polygons); }, otherWays.size(),
            [&](std::size_t way, PolygonVector & other) { return RunOtherWay(task, otherWays[way], other, run); });
    }
    result.swap(made); // what it held goes with `made`
    return isDone;
}

} // namespace geometry
