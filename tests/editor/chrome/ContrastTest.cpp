// Every enabled label can be read, whatever lies beneath the plates.
#include "RootFixture.h"

#include "base/SystemColors.h"
#include "support/Contrast.h"

#include <algorithm>

namespace marrowfin::editor {

using namespace annotation;
namespace {

using testsupport::contrast;

class Contrast : public RootFixture {
protected:
    // Ink so thick that it covers the whole canvas.
    void cover(const QColor& color) {
        FreehandAnnotation stroke = pen({{0, 160}, {640, 160}}, 4000);
        stroke.strokeColor = color;
        document().add(stroke);
    }
    // Many colours, bright and dark side by side.
    void coverWithAPhoto() {
        cover(QColor(90, 120, 60));
        for (int i = 0; i < 60; ++i) {
            FreehandAnnotation stroke = pen({{-120.0 + i * 15, -200}, {-140.0 + i * 15, 600}}, 9);
            stroke.strokeColor = QColor::fromHsv(i * 47 % 360, 100 + i * 31 % 156, 30 + i * 83 % 226);
            document().add(stroke);
        }
    }
    // What stands out most in the text against what is most of its ground: the solid parts of its strokes.
    double contrastOf(const QImage& picture, int density, const QWidget* label) {
        const QPoint corner = label->mapTo(root.get(), QPoint(0, 0)) * density;
        // Inside the ends of a pill.
        const QRect area = QRect(corner, label->size() * density).adjusted(8 * density, 4, -8 * density, -4);
        std::map<QRgb, int> counts;
        for (int y = area.top(); y <= area.bottom(); ++y)
            for (int x = area.left(); x <= area.right(); ++x)
                ++counts[picture.pixel(x, y)];
        const QColor ground =
            std::max_element(counts.begin(), counts.end(), [](const auto& a, const auto& b) {
                return a.second < b.second;
            })->first;
        double most = 1;
        for (const auto& [color, count] : counts)
            most = std::max(most, contrast(QColor(color), ground));
        return most;
    }
    void expectReadable(const char* beneath) {
        press(ToolType::crop);
        tools().setCropRect(QRectF(100, 50, 300, 200));
        settle();
        const QList<const QWidget*> chips = [&] {
            QList<const QWidget*> all{controls().cropSizeLabel,   controls().cropCancelButton,
                                      controls().cropApplyButton, controls().pinButton,
                                      controls().copyButton,      controls().saveButton};
            for (const auto& [aspect, chip] : controls().aspectButtons)
                all.append(chip);
            return all;
        }();
        for (const ColorScheme scheme : {ColorScheme::Light, ColorScheme::Dark}) {
            desktop.appearance.setColorScheme(scheme);
            constexpr int density = 4;
            const QImage picture = shot(density);
            for (const QWidget* label : chips)
                EXPECT_GE(contrastOf(picture, density, label), 4.5)
                    << beneath << (scheme == ColorScheme::Dark ? " dark " : " light ")
                    << label->accessibleName().toStdString() << " at " << label->x();
        }
    }
};

// Its plate is hardly there: what it stands on is the canvas beside the image.
TEST_F(Contrast, OfTheStatusChipBesideTheImage) {
    for (const ColorScheme scheme : {ColorScheme::Light, ColorScheme::Dark}) {
        desktop.appearance.setColorScheme(scheme);
        constexpr int density = 4;
        EXPECT_GE(contrastOf(shot(density), density, controls().statusChip), 4.5);
    }
}

TEST_F(Contrast, OverWhite) {
    cover(Qt::white);
    expectReadable("white");
}

TEST_F(Contrast, OverBlack) {
    cover(Qt::black);
    expectReadable("black");
}

TEST_F(Contrast, OverAPhoto) {
    coverWithAPhoto();
    expectReadable("photo");
}

} // namespace
} // namespace marrowfin::editor
