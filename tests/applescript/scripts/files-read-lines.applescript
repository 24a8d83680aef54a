-- expect source: {{"one", "two", "three"}, {"one", "two", "three", ""}, "one", "two", "three"}
set notes to POSIX file "/Users/me/Notes.txt"
{read notes using delimiter linefeed, paragraphs of (read notes), read notes for 3, read notes from 5 to 7, read notes from -6 to -2}
