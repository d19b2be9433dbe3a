#pragma once

#include "zent/expression/Value.h"
#include "zent/geometry/shapes.h"
#include "zent/geometry/weights.h"

#include <any>
#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace zent {

/// Reads the blocks of a resource file in order and hands each one over. Returns their number, or nothing for a file
/// that cannot be opened. Bytes that the file lacks are zero, up to `kMostMissingBytes` in all. Before any block is
/// read, std::length_error is thrown for a number of blocks or a size that no vector could have, and
/// std::runtime_error, which names the block, for a table or blocks that reach further beyond the file's end.
std::optional<std::size_t> readResourceBlocks(const std::string& path,
                                              const std::function<void(unsigned int, std::vector<char>&&)>& take);

inline constexpr std::size_t kMostMissingBytes = std::size_t{16} << 20;

/// Parses a block, overwriting the record whole. Bytes beyond what the record's counts ask for are dropped, as is a
/// last record of a list that is not complete. Throws std::runtime_error where the block cannot hold its head or its
/// counts.
void LoadResource(Mesh& mesh, const std::vector<char>& bytes);
void LoadResource(Curve& curve, const std::vector<char>& bytes);
void LoadResource(Surface& surface, const std::vector<char>& bytes);
/// The product of the counts is taken in 32 bits, and so may wrap; see requireAddressable.
void LoadResource(Lattice& lattice, const std::vector<char>& bytes);
/// Of two equal keys the first one counts.
void LoadResource(WeightMap& map, const std::vector<char>& bytes);
void LoadResource(DeltaList& deltas, const std::vector<char>& bytes);
void LoadResource(SkinWeights& weights, const std::vector<char>& bytes);
void LoadResource(WireBindings& bindings, const std::vector<char>& bytes);
void LoadResource(std::vector<unsigned int>& numbers, const std::vector<char>& bytes);
void LoadResource(std::vector<unsigned char>& code, const std::vector<char>& bytes);
void LoadResource(std::vector<Value>& constants, const std::vector<char>& bytes);

/// The blocks of a resource file: read whole at the start of a run, each parsed into its type when it is first asked
/// for. A block has no type of its own; its first reader fixes it for the rest of the run.
class ResourceStorage {
public:
    /// Reads all blocks of a file in place of those of an earlier one. A file that cannot be opened leaves the storage
    /// as it was, without an error; errors of the file are those of readResourceBlocks.
    void load(const std::string& path);

    /// The record of a block, of one of the types that LoadResource knows. Throws std::bad_any_cast if the block was
    /// first asked for as another type, and std::runtime_error, naming the block, where there is no such block or its
    /// bytes cannot hold the record.
    template <class T>
    const T& get(unsigned int id);

    bool loaded = false; ///< a whole file has been read and no run has ended since

private:
    void requireBlock(unsigned int id) const;

    std::vector<std::any> values_;
    std::map<unsigned int, std::vector<char>> raw_;
};

} // namespace zent
