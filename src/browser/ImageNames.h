// The list of a camera folder's images, which may hold half a million names and more.
#pragma once

#include "base/NameList.h"
#include "browser/RadixSort.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QByteArrayView>

#include <optional>
#include <vector>

namespace velmora {

/// The names of a folder's images, sorted by name, in compact form: nearly every name is date
/// digits and an ending that it shares with the others, and takes eight bytes. The order is that
/// of compareNames(). Names are native bytes, indexes 0-based.
class ImageNames
{
public:
    [[nodiscard]] qsizetype count() const;

    /// index: below count().
    [[nodiscard]] QByteArray name(qsizetype index) const;

    /// Where exactly this name is, if it is there.
    [[nodiscard]] std::optional<qsizetype> find(QByteArrayView name) const;

    /// The first name, in order, that contains the key, in the same case. Eight digits as a key
    /// mean a day: a captured image has them at the beginning of its name. An empty key has none.
    [[nodiscard]] std::optional<qsizetype> firstContaining(QByteArrayView key) const;

    /// The first name, in order, that begins with the text, in either case.
    [[nodiscard]] std::optional<qsizetype> firstBeginningWith(QByteArrayView text) const;

    /// Number of names that come before a text in the list's order.
    [[nodiscard]] qsizetype countBefore(QByteArrayView text) const { return namesBefore(text); }

    /// Memory that the list takes.
    [[nodiscard]] std::size_t bytes() const;

private:
    friend class ImageNamesBuilder;

    static constexpr unsigned kSuffixBits = 4;
    static constexpr quint64 kMostSuffixes = 1U << kSuffixBits;

    // Number of standard names, or of all names, before a text.
    [[nodiscard]] qsizetype standardsBefore(QByteArrayView text) const;
    [[nodiscard]] qsizetype namesBefore(QByteArrayView text) const;

    [[nodiscard]] QByteArray standard(qsizetype index) const;
    [[nodiscard]] qsizetype placeOfStandard(qsizetype index) const;
    [[nodiscard]] std::optional<qsizetype> standardBeginningWith(QByteArrayView key) const;
    [[nodiscard]] std::optional<qsizetype> standardContaining(QByteArrayView key) const;
    [[nodiscard]] std::optional<qsizetype> oddContaining(QByteArrayView key) const;

    std::vector<quint64> standards_; // the digits' number, then 4 bits for the suffix
    QByteArrayList suffixes_;        // at most 16, in order
    NameList odds_;                  // all other names
    std::vector<quint32> oddPlaces_; // of the odd names among all, in order
};

/// Takes names in any order, sorts them in steps, and gives the list: add() each, then sortSome()
/// until it is false, then take().
class ImageNamesBuilder
{
public:
    /// Names that do not begin with "20" are no images and are left out. name: native bytes, 255 at
    /// most; need not stay.
    void add(QByteArrayView name);

    /// Does a part of the sorting, two milliseconds at most; false when all is done.
    bool sortSome();

    [[nodiscard]] ImageNames take() { return std::move(names_); }

private:
    enum class Phase { Number, SortStandards, SortOdds, PlaceOdds, Done };

    [[nodiscard]] std::optional<quint64> suffixNumber(QByteArrayView suffix);
    void orderSuffixes();
    void numberSome();
    void placeSome();

    ImageNames names_;
    quint64 lastSuffix_ = 0;
    Phase phase_ = Phase::Number;
    std::vector<quint64> newNumbers_; // of the suffixes, by the numbers in order of arrival
    std::size_t next_ = 0;
    RadixSort sort_;
};

} // namespace velmora
