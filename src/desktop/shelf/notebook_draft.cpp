#include "desktop/shelf/notebook_draft.h"

#include <QtCore/QFileInfo>
#include <QtGui/QImageReader>

#include "desktop/shelf/cover_values.h"

namespace tessary {

void NotebookDraft::setColor(const QString& color) {
    if (color == color_) return;
    takeColor(color);
    Q_EMIT changed();
}

void NotebookDraft::takeColor(const QString& color) {
    color_ = color;
    if (const QString hex = coverColorHex(color); !hex.isEmpty()) shownColor_ = "#" + hex;
}

bool NotebookDraft::colorIsValid() const { return !coverColorHex(color_).isEmpty(); }

void NotebookDraft::begin(const QString& notebook) {
    if (shelf_ == nullptr) return;
    const QVariantMap look = shelf_->lookOf(notebook);
    notebookId_ = notebook;
    name_ = look["name"].toString();
    subtitle_ = look["subtitle"].toString();
    emoji_ = look["emoji"].toString();
    takeColor(look["color"].toString());
    accent_ = look["accent"].toString();
    material_ = look["material"].toString();
    pattern_ = look["pattern"].toString();
    labelStyle_ = look["labelStyle"].toString();
    coverImage_ = look["coverImage"].toString();
    band_ = look["band"].toBool();
    ribbon_ = look["ribbon"].toBool();
    Q_EMIT changed();
}

QString NotebookDraft::pictureFilter() const {
    const QList<QByteArray> readable = QImageReader::supportedImageFormats();
    QStringList patterns;
    for (const char* const format : {"jpg", "jpeg", "png", "webp", "gif", "bmp", "svg", "tiff", "avif", "heic"}) {
        if (readable.contains(format)) patterns.append(QLatin1String("*.") + QLatin1String(format));
    }
    return tr("Pictures (%1)").arg(patterns.join(' '));
}

void NotebookDraft::chooseCoverImage(const QUrl& file) {
    const QString path = file.toLocalFile();
    if (!QImageReader(path).canRead()) {
        const QString sentence = tr("“%1” is not a picture that can be shown.").arg(QFileInfo(path).fileName());
        if (shelf_ != nullptr) shelf_->desk()->refuse(sentence.toStdString());
        return;
    }
    coverImage_ = path;
    Q_EMIT changed();
}

void NotebookDraft::removeCoverImage() {
    coverImage_.clear();
    Q_EMIT changed();
}

QVariantMap NotebookDraft::look() const {
    return {{"name", name_},     {"subtitle", subtitle_}, {"emoji", emoji_},          {"color", color_},
            {"accent", accent_}, {"material", material_}, {"pattern", pattern_},      {"labelStyle", labelStyle_},
            {"band", band_},     {"ribbon", ribbon_},     {"coverImage", coverImage_}};
}

QString NotebookDraft::save() {
    if (shelf_ == nullptr || !canSave()) return {};
    if (notebookId_.isEmpty()) return shelf_->create(name_, look());
    return shelf_->restyle(notebookId_, look()) ? notebookId_ : QString();
}

}  // namespace tessary
