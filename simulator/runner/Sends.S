// How an image sends messages. Apple's runtime has one function for each kind of send, which the image calls with the
// message's own arguments; GCC's runtime looks a method up and lets the caller call it. Each of these saves every register
// that may hold an argument, looks up, and jumps to the method, so that no frame of its own is left.
//
// A message to nil is answered here with zero in every register that may hold a result: the runtime's own answer leaves
// those of floating-point results alone. A result in memory is left as it is: the compiler zeroes it at the call.

.text

// VornSend NAME, LOOKUP, HAS_RESULT_IN_MEMORY, IS_SUPER: receiver and selector are the first two arguments; where the result
// goes to memory, its place is the first, and they are the next two. Super sends have the address of a pair in place of the
// receiver, which is the first word of the pair; there is always one.
.macro VornSend name, lookup, hasResultInMemory, isSuper
    .globl \name
    .hidden \name
    .type \name, @function
\name:
    .cfi_startproc
.if \isSuper == 0
.if \hasResultInMemory
    test    %rsi, %rsi
    jnz     1f
    mov     %rdi, %rax
    ret
.else
    test    %rdi, %rdi
    jnz     1f
    xor     %eax, %eax
    xor     %edx, %edx
    pxor    %xmm0, %xmm0
    pxor    %xmm1, %xmm1
    ret
.endif
1:
.endif
    push    %rbp
    .cfi_def_cfa_offset 16
    .cfi_offset %rbp, -16
    mov     %rsp, %rbp
    .cfi_def_cfa_register %rbp
    sub     $192, %rsp
    movaps  %xmm0, (%rsp)
    movaps  %xmm1, 16(%rsp)
    movaps  %xmm2, 32(%rsp)
    movaps  %xmm3, 48(%rsp)
    movaps  %xmm4, 64(%rsp)
    movaps  %xmm5, 80(%rsp)
    movaps  %xmm6, 96(%rsp)
    movaps  %xmm7, 112(%rsp)
    mov     %rdi, 128(%rsp)
    mov     %rsi, 136(%rsp)
    mov     %rdx, 144(%rsp)
    mov     %rcx, 152(%rsp)
    mov     %r8, 160(%rsp)
    mov     %r9, 168(%rsp)
    mov     %rax, 176(%rsp)
.if \hasResultInMemory
    mov     %rsi, %rdi
    mov     %rdx, %rsi
.endif
    call    \lookup@PLT
    mov     %rax, %r11
    movaps  (%rsp), %xmm0
    movaps  16(%rsp), %xmm1
    movaps  32(%rsp), %xmm2
    movaps  48(%rsp), %xmm3
    movaps  64(%rsp), %xmm4
    movaps  80(%rsp), %xmm5
    movaps  96(%rsp), %xmm6
    movaps  112(%rsp), %xmm7
    mov     128(%rsp), %rdi
    mov     136(%rsp), %rsi
    mov     144(%rsp), %rdx
    mov     152(%rsp), %rcx
    mov     160(%rsp), %r8
    mov     168(%rsp), %r9
    mov     176(%rsp), %rax
    leave
    .cfi_def_cfa %rsp, 8
.if \isSuper
.if \hasResultInMemory
    mov     (%rsi), %rsi
.else
    mov     (%rdi), %rdi
.endif
.endif
    jmp     *%r11
    .cfi_endproc
    .size \name, . - \name
.endm

VornSend VornRunnerSend, objc_msg_lookup, 0, 0
VornSend VornRunnerSendWithResultInMemory, objc_msg_lookup, 1, 0
VornSend VornRunnerSuperSend, VornRunnerLookUpInSuperclass, 0, 1
VornSend VornRunnerSuperSendWithResultInMemory, VornRunnerLookUpInSuperclass, 1, 1

.section .note.GNU-stack, "", @progbits
