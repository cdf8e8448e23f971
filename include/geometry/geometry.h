/// \file
/// Everything that a caller of the library needs.
#pragma once

#include <geometry/arc/path_object_arc.h>
#include <geometry/clip/polygon_clip_base.h>
#include <geometry/clip/spatial_hash_container.h>
#include <geometry/export.h>
#include <geometry/numeric/almost_equal.h>
#include <geometry/numeric/bounding_rect.h>
#include <geometry/numeric/point.h>
#include <geometry/numeric/self_destructing_container.h>
#include <geometry/path/path_object_base.h>
#include <geometry/path/path_object_polyline.h>
#include <geometry/polygon/polygon.h>
#include <geometry/polygon/vertex_iterator.h>
#include <geometry/report/report.h>
#include <geometry/thread/thread.h>
#include <geometry/version.h>
