// Sorts numbers in steps, so that a long list never holds up the event loop. Image names of a large
// folder are such numbers, and come in no order: half a million take 11 ms here, and 31 ms with the
// library's sort, which cannot be interrupted either.
#pragma once

#include <QtGlobal>

#include <array>
#include <cstddef>
#include <utility>
#include <vector>

namespace velmora {

/// Sorts from the lowest digit to the highest; digits that are the same in all numbers cost
/// nothing, nor do numbers that are already in ascending or descending order.
class RadixSort
{
public:
    RadixSort() = default;
    explicit RadixSort(std::vector<quint64> values);

    /// Does at most a millisecond of the work; false when it is done.
    bool sortSome();

    /// The sorted numbers, once it is done.
    [[nodiscard]] std::vector<quint64> take() { return std::move(values_); }

private:
    static constexpr unsigned kDigitBits = 11;
    static constexpr std::size_t kDigitValues = std::size_t{1} << kDigitBits;
    static constexpr std::size_t kDigits = 6;

    using Places = std::array<quint32, kDigitValues>;

    enum class Phase { Look, Count, Move, Done };

    [[nodiscard]] std::size_t digit(quint64 value, std::size_t number) const
    {
        return ((value - lowest_) >> (number * kDigitBits)) & (kDigitValues - 1);
    }

    void look(std::size_t end);
    void afterLook();
    void count(std::size_t end);
    void move(std::size_t end);
    void nextDigit();
    [[nodiscard]] bool varies(const Places &counts) const;

    std::vector<quint64> values_;
    std::vector<quint64> sorted_;
    std::vector<Places> places_; // by digit: first counts, then where the next such number goes
    quint64 lowest_ = 0;
    quint64 highest_ = 0;
    bool ascends_ = true;
    bool descends_ = true;
    Phase phase_ = Phase::Look;
    std::size_t digits_ = 0; // those that can vary
    std::size_t digit_ = 0;
    std::size_t next_ = 0;
};

} // namespace velmora
