#pragma once

#include <cstddef>
#include <vector>

namespace scene {

/// A list that only grows, and in which nothing ever moves.
template <class T>
class Arena {
public:
    T& add() {
        if (chunks_.empty() || chunks_.back().size() == kChunk) {
            chunks_.emplace_back().reserve(kChunk);
        }
        return chunks_.back().emplace_back();
    }
    const T& operator[](std::size_t i) const { return chunks_[i / kChunk][i % kChunk]; }
    std::size_t size() const { return chunks_.empty() ? 0 : (chunks_.size() - 1) * kChunk + chunks_.back().size(); }
    void clear() { chunks_.clear(); }

private:
    static constexpr std::size_t kChunk = 256;
    std::vector<std::vector<T>> chunks_;
};

} // namespace scene
