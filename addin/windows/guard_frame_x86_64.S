# See guard_frame.h.
    .text
    .globl  QuantiverseGuardFrame
    .def    QuantiverseGuardFrame; .scl 2; .type 32; .endef
    .seh_proc QuantiverseGuardFrame
QuantiverseGuardFrame:
    pushq   %rbp
    .seh_pushreg %rbp
    movq    %rsp, %rbp
    .seh_setframe %rbp, 0
    subq    $48, %rsp
    .seh_stackalloc 48
    .seh_endprologue
    movq    %r8, -8(%rbp)           # where the filter finds `code`
    movq    %rcx, %rax
    movq    %rdx, %rcx
    call    *%rax
    nop                             # so that the return address lies inside of this function
    xorl    %eax, %eax
    jmp     1f
    .globl  QuantiverseGuardLanding
QuantiverseGuardLanding:            # the filter has unwound all frames above this one
    movl    $1, %eax
1:  leaq    0(%rbp), %rsp
    popq    %rbp
    ret
    .seh_handler QuantiverseGuardFilter, @except
    .seh_endproc
