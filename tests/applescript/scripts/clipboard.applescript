-- expect source: {"abc", {1, 2}, "12", {{text, 2}}, 5}
set the clipboard to "abc"
set a to the clipboard
set the clipboard to {1, 2}
set clipboard to 5
{a, the clipboard, the clipboard as text, clipboard info, clipboard}
