#pragma once

#include <cstddef>
#include <vector>

namespace zent {

/// What each point of a shape needs, point after point in one list.
template <class Item>
class ByPoint {
public:
    struct Range {
        const Item* first;
        const Item* last;

        const Item* begin() const { return first; }
        const Item* end() const { return last; }
    };

    ByPoint() = default;
    /// `visit(take)` calls take(point, item) for each item, and is called twice. The items of a point keep their order;
    /// those of points from `points` on are left out.
    template <class Visit>
    ByPoint(std::size_t points, Visit visit) : stretches_(points) {
        visit([this](std::size_t point, const Item& /*item*/) {
            if (point < stretches_.size()) {
                ++stretches_[point].end;
            }
        });
        std::size_t begin = 0;
        for (Stretch& stretch : stretches_) {
            const std::size_t count = stretch.end;
            stretch = {begin, begin}; // it grows again as it is filled
            begin += count;
        }
        items_.resize(begin);
        visit([this](std::size_t point, const Item& item) {
            if (point < stretches_.size()) {
                items_[stretches_[point].end++] = item;
            }
        });
    }

    /// The items of a point. Throws std::out_of_range beyond the last point, as a vector does.
    Range at(std::size_t point) const {
        const Stretch& stretch = stretches_.at(point);
        return {items_.data() + stretch.begin, items_.data() + stretch.end};
    }

private:
    struct Stretch {
        std::size_t begin = 0;
        std::size_t end = 0;
    };

    std::vector<Item> items_;
    std::vector<Stretch> stretches_; ///< by point
};

} // namespace zent
