// File names in listing order, kept whole and sorted a part at a time.
#pragma once

#include "base/NameOrder.h"

#include <QByteArrayView>

#include <cstddef>
#include <memory>
#include <system_error>
#include <vector>

namespace velmora {

/// A name in a NameList, which owns its bytes.
struct ListedName
{
    const char *text = nullptr;
    quint32 length = 0;

    [[nodiscard]] QByteArrayView view() const { return {text, static_cast<qsizetype>(length)}; }
};

/// add() each name, then call sortSome() until it returns false; the order is that of
/// compareNames(). The names' bytes lie in blocks of the list's own; once sorted, they lie in
/// order, one after another, so that a search through them all is quick.
class NameList
{
public:
    /// name: copied.
    void add(QByteArrayView name);

    /// Does at most two milliseconds of the sorting; false when it is done.
    bool sortSome();

    [[nodiscard]] const std::vector<ListedName> &list() const { return names_; }

    /// Why the folder that the names are from could not be read to its end; none when these are all
    /// of them.
    [[nodiscard]] std::error_code readError() const { return readError_; }

    void setReadError(std::error_code error) { readError_ = error; }

    /// Memory used by the list.
    [[nodiscard]] std::size_t bytes() const;

private:
    using Blocks = std::vector<std::unique_ptr<char[]>>;

    const char *store(QByteArrayView name);
    void sortRuns();
    void packSome();
    void startPair(std::size_t from);
    void mergeOne();
    [[nodiscard]] bool leftIsNext() const;

    Blocks blocks_;
    std::size_t used_ = 0; // of the last block
    Blocks unsorted_;      // while they are being packed
    std::size_t packed_ = 0;
    std::vector<ListedName> names_;
    std::error_code readError_;

    // Sorted runs, twice as long after each round; a round merges pairs of them into the other
    // list.
    std::vector<ListedName> merged_;
    std::size_t run_ = 0;
    std::size_t sorted_ = 0; // names in the initial sorted runs
    std::size_t left_ = 0;
    std::size_t leftEnd_ = 0;
    std::size_t right_ = 0;
    std::size_t rightEnd_ = 0;
};

} // namespace velmora
