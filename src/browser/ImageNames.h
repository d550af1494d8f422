// The list of a camera folder's images, of which there may be half a million and more.
#pragma once

#include "base/NameList.h"
#include "browser/RadixSort.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QByteArrayView>

#include <optional>
#include <system_error>
#include <vector>

namespace velmora {

/// True for a file that is listed as an image, by its name ("20*.*"). An undated picture, whose
/// name begins with the year 1899, is not.
[[nodiscard]] inline bool isListedName(QByteArrayView name)
{
    return name.startsWith("20");
}

/// The names of a folder's images, sorted, in compact form: nearly every name is date digits and an
/// ending that it shares with others, and takes eight bytes. The order is that of compareNames().
/// Names are native bytes, indexes 0-based.
class ImageNames
{
public:
    [[nodiscard]] qsizetype count() const;

    /// index: below count().
    [[nodiscard]] QByteArray name(qsizetype index) const;

    /// Position of exactly this name, if it is there.
    [[nodiscard]] std::optional<qsizetype> find(QByteArrayView name) const;

    /// The first name, in order, that contains the key, matching case. A key of eight digits means
    /// a day: a captured image has them at the beginning of its name. Nothing matches an empty key.
    [[nodiscard]] std::optional<qsizetype> firstContaining(QByteArrayView key) const;

    /// The first name, in order, that begins with the text, ignoring case.
    [[nodiscard]] std::optional<qsizetype> firstBeginningWith(QByteArrayView text) const;

    /// Number of names that come before a text in the list's order.
    [[nodiscard]] qsizetype countBefore(QByteArrayView text) const;

    /// Why the folder could not be read to its end; none when these are all of its images.
    [[nodiscard]] std::error_code readError() const { return readError_; }

    /// Memory used by the list.
    [[nodiscard]] std::size_t bytes() const;

private:
    friend class ImageNamesBuilder;

    static constexpr unsigned kSuffixBits = 4;
    static constexpr quint64 kMostSuffixes = 1U << kSuffixBits;

    [[nodiscard]] qsizetype standardsBefore(QByteArrayView text) const;

    [[nodiscard]] QByteArray standard(qsizetype index) const;
    [[nodiscard]] qsizetype placeOfStandard(qsizetype index) const;
    [[nodiscard]] std::optional<qsizetype> standardBeginningWith(QByteArrayView key) const;
    [[nodiscard]] std::optional<qsizetype> standardContaining(QByteArrayView key) const;
    [[nodiscard]] std::optional<qsizetype> oddContaining(QByteArrayView key) const;

    std::vector<quint64> standards_; // the digits' number, then 4 bits for the suffix
    QByteArrayList suffixes_;        // at most 16, in order
    NameList odds_;                  // all other names
    std::vector<quint32> oddPlaces_; // positions of the odd names among all, in order
    std::error_code readError_;
};

/// Takes names in any order, sorts them in steps, and gives the list: add() each, then call
/// sortSome() until it returns false, then take().
class ImageNamesBuilder
{
public:
    /// Names that do not begin with "20" are not images and are left out. name: native bytes, 255
    /// at most; copied.
    void add(QByteArrayView name);

    /// The folder could not be read to its end, and the list will say so.
    void setReadError(std::error_code error) { names_.readError_ = error; }

    /// Does at most two milliseconds of the sorting; false when it is done.
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
    std::vector<quint64> newNumbers_; // of the suffixes, indexed by the numbers in order of arrival
    std::size_t next_ = 0;
    RadixSort sort_;
};

} // namespace velmora
