-- expect error: -2741
use framework "Foundation"
