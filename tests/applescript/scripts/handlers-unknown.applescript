-- expect error: -1708
-- expect message: «script» doesn’t understand the “nobody” message.
nobody(1)
