-- expect error: -1728
every integer of {1, 2} whose it > 1
