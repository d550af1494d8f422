#include "capture/EditedOption.h"

#include <utility>

namespace velmora {

EditedOption::EditedOption(const SettingsFile &settings, const TextKey &key,
                           QString (*shown)(const QString &stored))
    : settings_(settings)
    , key_(key)
    , shown_(shown)
{
}

void EditedOption::load()
{
    seen_ = key_.read(settings_);
    show(shown_(seen_));
}

void EditedOption::adoptStored()
{
    const QString stored = key_.read(settings_);
    if (stored == std::exchange(seen_, stored)) {
        return;
    }
    if (isEdited_) {
        elsewhere_ = stored;
    } else {
        show(shown_(stored));
    }
}

void EditedOption::set(const QString &text)
{
    if (text != text_) {
        elsewhere_.reset(); // overwritten
        store(text);
    }
}

void EditedOption::correct(const QString &text)
{
    isCorrectionHeldBack_ = isEdited_;
    if (!isEdited_) {
        set(text);
    }
}

void EditedOption::beginEdit()
{
    isEdited_ = true;
    before_ = text_;
}

bool EditedOption::endEdit()
{
    if (const auto stored = std::exchange(elsewhere_, std::nullopt)) {
        store(text_ == before_ ? shown_(*stored) : text_);
    }
    isEdited_ = false;
    return std::exchange(isCorrectionHeldBack_, false);
}

void EditedOption::show(const QString &text)
{
    text_ = text;
    Q_EMIT changed(text_);
}

void EditedOption::store(const QString &text)
{
    text_ = text;
    key_.write(settings_, text_);
    seen_ = key_.read(settings_);
    Q_EMIT changed(text_);
}

} // namespace velmora
