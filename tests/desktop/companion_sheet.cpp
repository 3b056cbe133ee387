#include <QtGui/QPainter>
#include <array>
#include <cmath>
#include <filesystem>
#include <iostream>
#include <numbers>

#include "companion/plim_reaction_names.h"
#include "companion/plim_sampling.h"
#include "desktop/companion/plim_painter.h"

namespace tessary {
namespace {

constexpr int kMoments = 12;

QImage picture(const PlimFrame& frame, int side, PlimLook look) {
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    drawPlim(image, frame, look);
    return image;
}

QImage sheet(int columns, int rows, int side, bool dark) {
    QImage image(columns * side, rows * side, QImage::Format_RGB32);
    image.fill(dark ? QColor(0x21, 0x1D, 0x19) : QColor(0xFC, 0xFA, 0xF5));
    return image;
}

/// Every reaction in a row, from its start to its end.
QImage motions(int side, PlimLook look) {
    QImage image = sheet(kMoments, std::size(EnumNames<PlimReaction>::names), side, look.dark);
    QPainter painter(&image);
    int row = 0;
    for (const auto& [reaction, name] : EnumNames<PlimReaction>::names) {
        const double length = plimSpec().reaction(reaction).dur;
        for (int i = 0; i < kMoments; ++i)
            painter.drawImage(i * side, row * side, picture(plimFrame(reaction, length * i / kMoments), side, look));
        ++row;
    }
    return image;
}

/// The moments that stand for the reactions.
QImage stills(int side, PlimLook look) {
    QImage image = sheet(4, 2, side, look.dark);
    QPainter painter(&image);
    int place = 0;
    for (const auto& [reaction, name] : EnumNames<PlimReaction>::names) {
        const PlimFrame frame = plimFrame(reaction, plimSpec().reaction(reaction).still);
        painter.drawImage(place % 4 * side, place / 4 * side, picture(frame, side, look));
        ++place;
    }
    return image;
}

/// Lids of a calm and of a sad face, the wink, and the gaze all around: more than the reactions show of them.
QImage faces(int side, PlimLook look) {
    constexpr int kSteps = 9;
    QImage image = sheet(kSteps, 4, side, look.dark);
    QPainter painter(&image);
    for (int i = 0; i < kSteps; ++i) {
        const double u = static_cast<double>(i) / (kSteps - 1);
        std::array<PlimFrame, 4> frames;
        frames.fill(plimFrame(PlimReaction::idle, 0));
        frames[0].pose["lid"] = u;
        frames[1] = plimFrame(PlimReaction::fail, plimSpec().reaction(PlimReaction::fail).still);
        frames[1].pose["lid"] = u;
        frames[2].pose["wink"] = u;
        frames[3].pose["lx"] = std::cos(u * 2 * std::numbers::pi);
        frames[3].pose["ly"] = std::sin(u * 2 * std::numbers::pi);
        for (int row = 0; row < 4; ++row)
            painter.drawImage(i * side, row * side, picture(frames[static_cast<std::size_t>(row)], side, look));
    }
    return image;
}

void save(const std::filesystem::path& folder, const std::string& name, const QImage& image) {
    const std::string file = (folder / (name + ".png")).string();
    std::cout << file << (image.save(QString::fromStdString(file)) ? "" : " FAILED") << '\n';
}

}  // namespace
}  // namespace tessary

/// Writes pictures of all that the companion does, in light and dark: companion-sheet FOLDER.
int main(int argc, char** argv) {
    using namespace tessary;
    if (argc < 2) return 1;
    const std::filesystem::path folder = argv[1];
    std::filesystem::create_directories(folder);
    for (const bool dark : {false, true}) {
        const std::string end = dark ? "-dark" : "-light";
        save(folder, "motions" + end, motions(140, {dark, PlimDetail::full}));
        save(folder, "large" + end, stills(480, {dark, PlimDetail::full}));
        save(folder, "faces" + end, faces(210, {dark, PlimDetail::full}));
        save(folder, "badge-faces" + end, faces(96, {dark, detailFor(48)}));
        save(folder, "badges-48" + end, motions(48, {dark, detailFor(48)}));
        save(folder, "badges-48-at-2" + end, motions(96, {dark, detailFor(48)}));
        save(folder, "badges-32" + end, motions(32, {dark, detailFor(32)}));
    }
}
