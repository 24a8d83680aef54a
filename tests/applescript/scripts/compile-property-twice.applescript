-- expect error: -2751
-- expect message: The A property is specified more than once.
property a : 1
property A : 2
