// The plates and their buttons as a person sees them, compared with pictures: every kind of button in every
// state, light and dark, at both densities.
#include "base/SystemFonts.h"
#include "chrome/EditorChipButton.h"
#include "chrome/EditorGlyphButton.h"
#include "chrome/EditorLabelButton.h"
#include "chrome/EditorSwatchButton.h"
#include "chrome/EditorWidthButton.h"
#include "chrome/SlabFixture.h"
#include "support/Golden.h"

namespace marrowfin::chrome {

namespace {

constexpr test::GoldenTolerance blurred{2, 0.02};

// Bright, dark and coloured parts, with hard edges.
QImage photo(const QSize& size) {
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient sky(0, 0, 0, size.height());
    sky.setColorAt(0, QColor(70, 140, 220));
    sky.setColorAt(0.6, QColor(250, 180, 120));
    sky.setColorAt(1, QColor(30, 40, 60));
    painter.fillRect(image.rect(), sky);
    painter.fillRect(0, 0, size.width() / 3, size.height(), QColor(10, 12, 20));
    for (int y = 10; y < size.height(); y += 22)
        painter.fillRect(size.width() / 2, y, size.width() / 2 - 20, 9, QColor(255, 255, 250));
    return image;
}

QString named(const char* what, ColorScheme scheme, int density) {
    return QStringLiteral("%1-%2-%3")
        .arg(QLatin1String(what),
             scheme == ColorScheme::Dark ? QStringLiteral("dark") : QStringLiteral("light"),
             QString::number(density));
}

} // namespace

class SlabLooks : public SlabFixture {
protected:
    SlabLooks() : slab(SlabGround::Window, 13, &window) {
        below.setPicture(photo(window.size()));
        floatOver(slab);
        slab.setContentSize(340, 216, 10, 10, 10, 10);
        place(slab, {20, 32, 360, 236});
    }

    template <class Button>
    Button& put(Button* button, const QRectF& frame) {
        place(*button, frame);
        return *button;
    }
    // From the left, in rows from the top of the content.
    void addGlyphs() {
        const QString symbols[]{QStringLiteral("rectangle"), QStringLiteral("arrow.up.right"),
                                QStringLiteral("textformat"), QStringLiteral("arrow.uturn.backward"),
                                QStringLiteral("1.circle")};
        std::vector<EditorGlyphButton*> glyphs;
        for (int i = 0; i < 5; ++i)
            glyphs.push_back(
                &put(new EditorGlyphButton(symbols[i], QStringLiteral("Tool"), 13, slab.content()),
                     {i * 40.0, 186, 30, 30}));
        pointAt(*glyphs[1]);
        glyphs[2]->setSelectedTool(true);
        glyphs[3]->setEnabled(false);
        glyphs[3]->setAlphaValue(0.35);
    }
    void addLabels() {
        const QString copy = QStringLiteral("doc.on.doc");
        double x = 0;
        const auto add = [&](const QString& title, const QString& symbol, Prominence prominence,
                             double y) -> auto& {
            auto& button =
                put(new EditorLabelButton(title, symbol, prominence, QString(), slab.content()), {});
            button.fitToHeight(26);
            place(button, {x, y, QSizeF(button.size()).width(), 26});
            x += button.width() + 8;
            return button;
        };
        add(QStringLiteral("Copy"), copy, Prominence::Plain, 144);
        pointAt(add(QStringLiteral("Pin"), QStringLiteral("pin"), Prominence::Plain, 144));
        add(QStringLiteral("Cancel"), {}, Prominence::Plain, 144);
        x = 0;
        add(QStringLiteral("Save…"), {}, Prominence::Prominent, 108);
        pointAt(add(QStringLiteral("Copy"), copy, Prominence::Prominent, 108));
        auto& disabled = add(QStringLiteral("Apply"), {}, Prominence::Prominent, 108);
        disabled.setEnabled(false);
        disabled.setAlphaValue(0.4);
    }
    void addSwatches() {
        const QColor colors[]{systemColor(SystemColor::red), systemColor(SystemColor::yellow), Qt::white,
                              Qt::black};
        for (int i = 0; i < 8; ++i)
            put(new EditorSwatchButton(colors[i % 4], QStringLiteral("Colour"), slab.content()),
                {i * 28.0, 76, 22, 22})
                .setCurrent(i >= 4);
    }
    void addWidths() {
        const double dots[]{4, 6, 9, 12};
        for (int i = 0; i < 8; ++i)
            put(new EditorWidthButton(QStringLiteral("Width"), i, dots[i % 4], slab.content()),
                {i * 28.0, 40, 24, 24})
                .setCurrent(i >= 4);
        auto& disabled =
            put(new EditorWidthButton(QStringLiteral("Width"), 8, 9, slab.content()), {224, 40, 24, 24});
        disabled.setEnabled(false);
        disabled.setAlphaValue(0.3);
    }
    void addChips() {
        const QString titles[]{QStringLiteral("Original"), QStringLiteral("16:9"), QStringLiteral("Free")};
        double x = 0;
        for (int i = 0; i < 3; ++i) {
            auto& chip = put(new EditorChipButton(titles[i], {}, slab.content()), {});
            const double width = chip.sizeHint().width() + 12;
            place(chip, {x, 4, width, 22});
            x += width + 2;
            chip.setCurrent(i == 2);
            if (i == 1)
                pointAt(chip);
        }
    }

    void addEverything() {
        window.show();
        addGlyphs();
        addLabels();
        addSwatches();
        addWidths();
        addChips();
        for (QWidget* button : slab.content()->findChildren<QWidget*>())
            button->show();
        pass(1);
    }

    EditorSlabView slab;
};

TEST_F(SlabLooks, EveryButtonInEveryState) {
    addEverything();
    for (const ColorScheme scheme : {ColorScheme::Light, ColorScheme::Dark}) {
        useScheme(scheme);
        for (const int density : {1, 2})
            EXPECT_TRUE(test::matchesGolden(MARROWFIN_TEST_SOURCE_DIR, named("controls", scheme, density),
                                            picture(density), blurred));
    }
}

// One kind of button after the other, its first one with the keyboard; rows of the plate under each other.
TEST_F(SlabLooks, TheButtonWithTheKeyboard) {
    addEverything();
    QApplication::setActiveWindow(&window);
    for (const ColorScheme scheme : {ColorScheme::Light, ColorScheme::Dark}) {
        useScheme(scheme);
        QImage rows(720, 5 * 60, QImage::Format_RGB32);
        QPainter painter(&rows);
        int row = 0;
        const auto focus = [&](QWidget* button) {
            button->setFocus(Qt::TabFocusReason);
            const int middle = button->mapTo(&window, button->rect().center()).y();
            painter.drawImage(QPoint(0, 60 * row++), picture(2), QRect(40, 2 * middle - 30, 720, 60));
        };
        const QList<EditorGlyphButton*> glyphs = slab.findChildren<EditorGlyphButton*>();
        focus(glyphs[2]); // the chosen one
        focus(slab.findChildren<EditorLabelButton*>()[3]);
        focus(slab.findChildren<EditorSwatchButton*>()[4]);
        focus(slab.findChildren<EditorWidthButton*>()[0]);
        focus(slab.findChildren<EditorChipButton*>()[0]);
        painter.end();
        EXPECT_TRUE(
            test::matchesGolden(MARROWFIN_TEST_SOURCE_DIR, named("keyboard", scheme, 2), rows, blurred));
    }
}

TEST_F(SlabLooks, OverTheDesktopWhatIsBeneathShowsThrough) {
    EditorSlabView pill(SlabGround::Desktop, 17, &window);
    slab.hide();
    pill.setContentSize(160, 19, 7, 14, 8, 14);
    place(pill, {110, 130, 188, 34});
    window.show();
    for (const ColorScheme scheme : {ColorScheme::Light, ColorScheme::Dark}) {
        useScheme(scheme);
        EXPECT_TRUE(test::matchesGolden(MARROWFIN_TEST_SOURCE_DIR, named("desktop", scheme, 2),
                                        picture(2).copy(160, 220, 500, 180), blurred));
    }
}

TEST_F(SlabLooks, AtDensitiesBetweenNothingIsCutOff) {
    addEverything();
    for (const double density : {1.25, 1.5})
        EXPECT_TRUE(test::matchesGolden(MARROWFIN_TEST_SOURCE_DIR, QStringLiteral("controls-%1").arg(density),
                                        picture(density), blurred));
}

} // namespace marrowfin::chrome
