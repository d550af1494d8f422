#include "ui/Accessibility.h"

#include "ui/Lamp.h"
#include "ui/PictureView.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QEvent>
#include <QLabel>
#include <QTextDocumentFragment>

namespace velmora {
namespace {

QString plainText(const QLabel &label)
{
    const bool isRich = label.textFormat() == Qt::RichText ||
                        (label.textFormat() == Qt::AutoText && Qt::mightBeRichText(label.text()));
    if (isRich) {
        return QTextDocumentFragment::fromHtml(label.text()).toPlainText();
    }
    QString text = label.text();
    return label.buddy() != nullptr ? text.remove(u'&') : text; // the mark of a key
}

// The toolkit would tell the tool tip's markup.
QString plainTip(const QWidget &widget)
{
    const QString tip = widget.toolTip();
    return Qt::mightBeRichText(tip) ? QTextDocumentFragment::fromHtml(tip).toPlainText() : tip;
}

/// Announces a label's new text. QLabel does not announce a change of its text; its repaint is used
/// instead.
class TextWatch final : public QObject
{
public:
    explicit TextWatch(QLabel &label)
        : QObject(&label)
        , label_(label)
        , announced_(label.text())
    {
        label_.installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && label_.text() != announced_) {
            announced_ = label_.text();
            QAccessibleEvent change(&label_, QAccessible::NameChanged);
            QAccessible::updateAccessibility(&change);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QLabel &label_;
    QString announced_;
};

/// Serves labels of all kinds: a label may get its name only after this was made for it.
class LabelInterface final : public QAccessibleWidget
{
public:
    explicit LabelInterface(QLabel &label)
        : QAccessibleWidget(&label)
        , label_(label)
    {
        new TextWatch(label);
    }

    [[nodiscard]] QAccessible::Role role() const override
    {
        return label_.pixmap().isNull() ? QAccessible::StaticText : QAccessible::Graphic;
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        const QString value = plainText(label_);
        if (kind == QAccessible::Value) {
            return value;
        }
        if (kind == QAccessible::Description && label_.accessibleDescription().isEmpty()) {
            return plainTip(label_);
        }
        if (kind != QAccessible::Name) {
            return QAccessibleWidget::text(kind);
        }
        const QString name = label_.accessibleName();
        return name.isEmpty() || value.isEmpty() ? name + value
                                                 : QStringLiteral("%1: %2").arg(name, value);
    }

    [[nodiscard]] QList<std::pair<QAccessibleInterface *, QAccessible::Relation>>
    relations(QAccessible::Relation match) const override
    {
        auto related = QAccessibleWidget::relations(match);
        if (label_.buddy() != nullptr && match.testFlag(QAccessible::Labelled)) {
            related.append(
                {QAccessible::queryAccessibleInterface(label_.buddy()), QAccessible::Labelled});
        }
        return related;
    }

private:
    QLabel &label_;
};

/// Serves pictures and lamps: described by what they show, and by nothing while they show nothing.
class PictureInterface final : public QAccessibleWidget
{
public:
    explicit PictureInterface(QWidget &picture)
        : QAccessibleWidget(&picture, QAccessible::Graphic)
    {
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Description) {
            return widget()->accessibleDescription();
        }
        return kind == QAccessible::Help ? plainTip(*widget()) : QAccessibleWidget::text(kind);
    }
};

/// Serves the windows of this program and their plain parts: a widget may become a window, or a
/// part of one, only after this was made for it.
class WindowInterface final : public QAccessibleWidget
{
public:
    using QAccessibleWidget::QAccessibleWidget;

    [[nodiscard]] QAccessible::Role role() const override
    {
        return widget()->isWindow() ? QAccessible::Window : QAccessibleWidget::role();
    }
};

// Boxes, lists and areas that scroll have interfaces of the toolkit's.
bool isPlain(const QObject &object)
{
    const QMetaObject *const own = object.metaObject();
    const QMetaObject *base = own;
    while (QByteArrayView(base->className()).startsWith("velmora::")) {
        base = base->superClass();
    }
    return base != own && base == &QWidget::staticMetaObject;
}

QAccessibleInterface *describe(const QString &, QObject *object)
{
    if (auto *const label = qobject_cast<QLabel *>(object); label != nullptr) {
        return new LabelInterface(*label);
    }
    auto *const widget = qobject_cast<QWidget *>(object);
    if (qobject_cast<PictureView *>(object) != nullptr || qobject_cast<Lamp *>(object) != nullptr) {
        return new PictureInterface(*widget);
    }
    return widget != nullptr && isPlain(*widget) ? new WindowInterface(widget) : nullptr;
}

} // namespace

void installAccessibility()
{
    QAccessible::installFactory(describe);
}

} // namespace velmora
