#include "tools/ImportName.h"

#include "base/Characters.h"
#include "base/NameStamp.h"

namespace velmora {
namespace {

constexpr int kStemCharacters = 15;     // date and time
constexpr int kNumberedCharacters = 20; // with the number and the dot
constexpr int kNumberDigits = 4;

// Where the character after that many begins; nothing when there are fewer.
std::optional<qsizetype> behind(int characters, QByteArrayView name)
{
    qsizetype at = 0;
    for (int i = 0; i < characters; ++i) {
        if (at == name.size()) {
            return std::nullopt;
        }
        at += characterLength(name, at);
    }
    return at;
}

QByteArray fourDigits(qint16 number)
{
    return ("0000" + QByteArray::number(number)).last(kNumberDigits);
}

} // namespace

bool needsImportName(QByteArrayView name)
{
    const qsizetype dot = name.indexOf('.');
    return !name.startsWith('2') || dot < 0 || behind(kNumberedCharacters - 1, name) != dot;
}

QByteArray importName(QByteArrayView name, WallTime created, qint16 collisions)
{
    return momentKey(created) + fourDigits(collisions) + '.' +
           name.sliced(name.indexOf('.') + 1).toByteArray();
}

std::optional<QByteArray> nameAfterCollision(QByteArrayView name, qint16 collisions)
{
    const std::optional<qsizetype> rest = behind(kNumberedCharacters, name);
    if (!rest) {
        return std::nullopt;
    }
    const qsizetype stem = behind(kStemCharacters, name).value_or(0);
    return name.first(stem).toByteArray() + fourDigits(collisions) +
           name.sliced(*rest).toByteArray();
}

} // namespace velmora
