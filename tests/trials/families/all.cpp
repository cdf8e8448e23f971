#include "families.h"

namespace trials
{

std::vector<TFamily> const & AllFamilies()
{
    static std::vector<TFamily> const families = {{"boards", Boards},
                                                  {"teardrops", Teardrops},
                                                  {"trackpads", TrackAndPad},
                                                  {"commonlines", CommonLines},
                                                  {"chains", Chains},
                                                  {"grown", Grown},
                                                  {"nearcopies", NearCopies},
                                                  {"pinched", Pinched},
                                                  {"sharedcircles", SharedCircles},
                                                  {"gears", Gears},
                                                  {"plain", Plain},
                                                  {"grids", Grids},
                                                  {"paths", Paths}};
    return families;
}

} // namespace trials
