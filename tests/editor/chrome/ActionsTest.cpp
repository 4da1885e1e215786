// Copy and pin against a real document.
#include "editor/chrome/RootFixture.h"

#include "annotation/ImageCompositor.h"

namespace marrowfin {

using Actions = RootFixture;

TEST_F(Actions, copy_puts_the_annotated_image_on_the_clipboard) {
    int copied = 0;
    root->onCopy = [&] { ++copied; };
    drag({100, 100}, {300, 200});
    root->copyPressed();
    EXPECT_EQ(copied, 1);
    ASSERT_TRUE(desktop.pasteboard.image);
    EXPECT_EQ(desktop.pasteboard.image->pixels(), ImageCompositor::composite(document()).pixels());
    EXPECT_NE(desktop.pasteboard.image->pixels(), page(640, 320));
}

TEST_F(Actions, copy_during_an_edit_of_text_has_what_was_typed) {
    type("t");
    clickMouse(canvas(), view({100, 100}));
    type("words");
    ASSERT_EQ(document().annotations().size(), 0);
    root->copyPressed();
    ASSERT_EQ(document().annotations().size(), 1);
    EXPECT_EQ(document().annotations()[0].as<TextAnnotation>()->text, "words");
    EXPECT_EQ(canvas().textEditor(), nullptr);
    EXPECT_EQ(desktop.pasteboard.image.value().pixels(), ImageCompositor::composite(document()).pixels());
}

} // namespace marrowfin
