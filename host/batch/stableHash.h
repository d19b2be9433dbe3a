#pragma once

#include <cstdint>
#include <string>

namespace batch {

/// A number of a text that is the same on every machine and in every version: FNV-1a, and a last step of MurmurHash3,
/// so that its low bits are as good as its high ones.
inline std::uint64_t stableHash(const std::string& text) {
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const char letter : text) {
        hash = (hash ^ static_cast<unsigned char>(letter)) * 0x100000001b3U;
    }
    hash = (hash ^ hash >> 33U) * 0xff51afd7ed558ccdU;
    return hash ^ hash >> 33U;
}

} // namespace batch
