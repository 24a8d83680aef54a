# desktop: --tray none
"""A desktop that has no tray."""

from lib.morlatest import DesktopTest, main


class StatusItem(DesktopTest):
    def test_gets_a_small_window_of_its_own_at_the_top_right(self):
        self.start_capture_one()
        before = self.keyboard()
        self.start_morla()
        x, y, width, height = self.display.geometry(self.wait_for_top_level("StatusItem"))
        self.assertTrue(x >= 1920 - 100 and x + width <= 1920 and y <= 50, f"at {x}, {y}")
        self.assertTrue(width <= 40 and height <= 40, f"{width} x {height}")
        self.assertEqual(self.keyboard(), before)

    def test_the_window_goes_with_the_program(self):
        self.start_morla()
        self.wait_for_top_level("StatusItem")
        self.desktop.quit_morla()
        self.assertIsNone(self.top_level("StatusItem"))


if __name__ == "__main__":
    main()
