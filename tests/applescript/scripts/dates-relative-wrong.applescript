-- expect error: -30720
date "no time" of (current date)
