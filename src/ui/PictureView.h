// A picture in a window: a stored image, nothing, or a file that is not a picture.
#pragma once

#include <QImage>
#include <QWidget>

#include <optional>

namespace velmora {

/// The accessible description is the native path of the file on show, empty if there is none.
class PictureView : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString notice READ notice)

public:
    enum class Shape {
        Stretched, // fills the widget, whatever the picture's shape
        Kept       // as large as fits, in the middle
    };

    enum class Scaling {
        Smooth,
        Fast // for pictures shown only for a moment
    };

    explicit PictureView(QWidget *parent = nullptr);

    /// Takes effect with the next picture.
    void setScaling(Scaling scaling) { scaling_ = scaling; }

    void setShape(Shape shape) { shape_ = shape; }

    /// The text shown while there is no picture, in as many lines as it needs.
    void setEmptyText(const QString &text);

    /// The text shown instead of a picture; empty when there is one.
    [[nodiscard]] QString notice() const;

    /// Shows a file's picture. A null image means that the file holds none.
    void showPicture(const QString &path, const QImage &image);

    /// Shows nothing.
    void clear();

    /// A line of text over the lower edge of the picture; hidden if empty.
    void setCaption(const QString &caption);

    [[nodiscard]] bool holdsPicture() const { return !image_.isNull(); }

    /// The file on show, or found not to be a picture; empty when there is none.
    [[nodiscard]] const QString &path() const { return path_; }

    /// The widget's size in screen pixels.
    [[nodiscard]] QSize pixels() const;

Q_SIGNALS:
    void pressed(Qt::MouseButton button, Qt::KeyboardModifiers modifiers);

    /// The left button was released, wherever that was.
    void released();

    /// Pressed and released with the left button; not emitted for the second click of a double
    /// click.
    void clicked();

    /// Both clicks were on this picture.
    void doubleClicked();
    void pointerMoved(QPoint position);

    /// The picture has changed size, and may be loaded for it.
    void resized();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] bool isSecondClick(const QMouseEvent &event) const;
    void paintPicture(QPainter &painter) const;
    void paintPlaceholder(QPainter &painter) const;
    void paintCaption(QPainter &painter) const;
    [[nodiscard]] QRectF place() const;

    QImage image_;
    QString path_;
    QString caption_;
    QString emptyText_;
    Shape shape_ = Shape::Kept;
    Scaling scaling_ = Scaling::Smooth;
    bool pressed_ = false;
    std::optional<quint64> pressedAt_; // ms, as mouse events count
};

} // namespace velmora
