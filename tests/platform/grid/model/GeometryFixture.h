// Columns and sizes for tests of the geometry: at scale 1, where a pixel is 15 twips.
#pragma once

#include "platform/grid/model/Geometry.h"

#include <gtest/gtest.h>

#include <vector>

namespace norvel::grid {

// Shown in this order; widths in pixels.
inline Columns columnsOf(const std::vector<int>& widths) {
    Columns columns;
    for (const int width : widths) {
        Column column;
        column.Width = width * 15.0;
        column.Order = columns.Count();
        columns.Add(column);
    }
    return columns;
}

// 20 for the record selectors, 25 each for headings and filter bar, rows of 20: 10 of them fit.
inline Measures sizes(int width = 520, int height = 250) {
    return {.width = width,
            .height = height,
            .selectorWidth = 20,
            .headingHeight = 25,
            .filterHeight = 25,
            .rowHeight = 20,
            .filterButtonWidth = 16,
            .edgeReach = 4,
            .splitLine = 4};
}

class PlacesTest : public testing::Test {
  protected:
    explicit PlacesTest(const std::vector<int>& widths) : columns(columnsOf(widths)) {}
    Hit hit(int x, int y) const { return geometry.HitTest(x, y, columns); }
    Columns columns;
    Geometry geometry;
};

} // namespace norvel::grid
