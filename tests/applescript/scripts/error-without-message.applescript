-- expect error: -128
-- expect message: User canceled.
error number -128
