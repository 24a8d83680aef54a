-- expect source: {true, true}
set base to POSIX path of (path to home folder)
set p to base & "Pictures/" & "x.jpg"
{p ends with "Pictures/x.jpg", (POSIX file p) as text ends with ":Pictures:x.jpg"}
