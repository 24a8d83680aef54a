-- expect error: -30720
date "no date at all"
