/// \file
/// What a caller learns of an operation that couldn't do all: by a report, or by the count of give-ups where the
/// library has no reports.
#pragma once

#include <sstream>
#include <string>

#include <geometry/clip/polygon_clip_base.h>

#if __has_include(<geometry/report/report.h>)
#include <geometry/report/report.h>
#define TRIALS_HAS_REPORT 1
#endif

namespace trials
{

class CWatch
{
public:
#ifdef TRIALS_HAS_REPORT
    bool IsComplete() const
    {
        return m_Report.IsComplete();
    }
    std::string Describe() const
    {
        std::ostringstream text;
        for (geometry::CReport::TEntry const & entry : m_Report.GetEntries())
        {
            text << " [" << geometry::CReport::GetName(entry.operation) << ": "
                 << geometry::CReport::GetText(entry.reason) << ']';
            if (text.tellp() > 300) break;
        }
        return text.str();
    }

private:
    geometry::CReport m_Report;
#else
    bool IsComplete() const
    {
        return Count() == m_Before;
    }
    std::string Describe() const
    {
        return " [gave up " + std::to_string(Count() - m_Before) + ']';
    }

private:
    static unsigned long long Count()
    {
        return geometry::CPolygonClipBase<double>::GetGaveUpCount();
    }
    unsigned long long m_Before = Count();
#endif
};

} // namespace trials
