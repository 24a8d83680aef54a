-- expect error: -1728
set {a, b} to {1}
