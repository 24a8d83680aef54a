-- expect error: -1713
display alert "Hello" message "World" as warning buttons {"A", "B"} default button "B"
