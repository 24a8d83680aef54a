-- expect source: {true, integer}
set s to current date
set e to current date
{e - s < 5, class of (e - s)}
