-- expect error: -1713
-- expect message: No user interaction allowed.
display dialog "Hello" buttons {"OK"} default button 1 with icon note with title "T" giving up after 5
