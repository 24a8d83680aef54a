// The C library lists here what it lacks on one processor; on ours it lacks nothing that is declared.
