// Both Macs are 64-bit; the C library's own header would ask which processor of its own it is.
#define __WORDSIZE 64
#define __WORDSIZE_TIME64_COMPAT32 0
#define __SYSCALL_WORDSIZE 64
