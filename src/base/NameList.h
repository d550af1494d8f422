// Names of files in the order in which they are listed, kept whole and sorted a part at a time.
#pragma once

#include "base/NameOrder.h"

#include <QByteArrayView>

#include <cstddef>
#include <memory>
#include <vector>

namespace velmora {

/// A name of a NameList, whose bytes belong to the list.
struct ListedName
{
    const char *text = nullptr;
    quint32 length = 0;

    [[nodiscard]] QByteArrayView view() const { return {text, static_cast<qsizetype>(length)}; }
};

/// add() each name, then sortSome() until it is false; the order is that of compareNames(). The
/// names' bytes lie in blocks of their own; once sorted, one behind the other in order, so that a
/// search through all of them is quick.
class NameList
{
public:
    /// name: need not stay.
    void add(QByteArrayView name);

    /// Does a part of the sorting, two milliseconds at most; false when all is done.
    bool sortSome();

    [[nodiscard]] const std::vector<ListedName> &list() const { return names_; }

    /// Memory that the list takes.
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
    Blocks unsorted_;      // while they are packed
    std::size_t packed_ = 0;
    std::vector<ListedName> names_;

    // Runs twice as long with each round; a round merges pairs of them into the other list.
    std::vector<ListedName> merged_;
    std::size_t run_ = 0;
    std::size_t sorted_ = 0; // names in sorted first runs
    std::size_t left_ = 0;
    std::size_t leftEnd_ = 0;
    std::size_t right_ = 0;
    std::size_t rightEnd_ = 0;
};

} // namespace velmora
