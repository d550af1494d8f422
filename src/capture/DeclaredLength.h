// The length that an answer declares for its body.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace velmora {

class DeclaredLength
{
public:
    /// Takes what a header says: a length, or several with commas between them; empty for none.
    /// False when one differs from the first, so that none can be believed.
    [[nodiscard]] bool take(QByteArrayView value);

    /// True for a length above `most`, also one that is too large for a number.
    [[nodiscard]] bool isAbove(qint64 most) const;

    /// A new answer begins.
    void forget() { first_.clear(); }

private:
    QByteArray first_; // as written; empty before any
};

} // namespace velmora
