# See guard_frame.h. The record of the handler lies on the stack, as the system wants it: the
# previous record and the handler; behind them are this frame's base and `code`.
    .text
    .globl  _QuantiverseGuardFrame
    .def    _QuantiverseGuardFrame; .scl 2; .type 32; .endef
_QuantiverseGuardFrame:
    pushl   %ebp
    movl    %esp, %ebp
    pushl   %ebx
    pushl   %esi
    pushl   %edi
    pushl   16(%ebp)
    pushl   %ebp
    pushl   $_QuantiverseGuardFilter
    pushl   %fs:0
    movl    %esp, %fs:0
    pushl   12(%ebp)
    call    *8(%ebp)
    addl    $4, %esp
    xorl    %eax, %eax
out:
    popl    %fs:0
    leal    -12(%ebp), %esp
    popl    %edi
    popl    %esi
    popl    %ebx
    popl    %ebp
    ret

# void QuantiverseGuardResume(record): unwinds all frames above the record's and goes on there.
    .globl  _QuantiverseGuardResume
    .def    _QuantiverseGuardResume; .scl 2; .type 32; .endef
_QuantiverseGuardResume:
    movl    4(%esp), %esi
    movl    8(%esi), %ebp
    pushl   $0
    pushl   $0
    pushl   $1f
    pushl   %esi
    call    _RtlUnwind@16
1:  movl    %fs:0, %esp
    movl    8(%esp), %ebp
    movl    $1, %eax
    jmp     out
