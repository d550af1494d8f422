#include "base/NameCase.h"

namespace velmora {
namespace {

constexpr char kCaseBit = 0x20; // between capital and small, in ASCII and in accented letters alike

bool isCapital(char c)
{
    return c >= 'A' && c <= 'Z';
}

// The second byte of the letters U+00C0 to U+00DE, except the multiplication sign among them.
bool isLatinCapital(char second)
{
    const auto byte = static_cast<unsigned char>(second);
    return byte >= 0x80 && byte <= 0x9E && byte != 0x97;
}

// Letters whose small form comes directly after the capital.
bool isCapitalOfAPair(char second)
{
    return second == '\x92' || second == '\xA0' || second == '\xBD';
}

void foldPair(char &first, char &second)
{
    if (first == '\xC3' && isLatinCapital(second)) {
        second = static_cast<char>(second + kCaseBit);
    } else if (first == '\xC5' && isCapitalOfAPair(second)) {
        second = static_cast<char>(second + 1);
    } else if (first == '\xC5' && second == '\xB8') { // its small form is not next to the capital
        first = '\xC3';
        second = '\xBF';
    }
}

} // namespace

QByteArray foldedName(QByteArrayView name)
{
    QByteArray folded = name.toByteArray();
    for (qsizetype i = 0; i < folded.size(); ++i) {
        char &c = folded[i];
        if (isCapital(c)) {
            c = static_cast<char>(c + kCaseBit);
        } else if (i + 1 < folded.size()) {
            foldPair(c, folded[i + 1]);
        }
    }
    return folded;
}

} // namespace velmora
