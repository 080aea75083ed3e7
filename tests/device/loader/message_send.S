/* tests/device/loader/message_send.S: the phone's way to send a message, on a runtime that only looks methods up.
 *
 * Each entry keeps every register that can hold an argument, asks for the implementation and jumps there, so
 * that the method sees the call as it was made. */

#if defined(__x86_64__)

/* Keeps the argument registers in a frame of this entry's own. */
.macro begin
  .cfi_startproc
  pushq %rbp
  .cfi_def_cfa_offset 16
  .cfi_offset %rbp, -16
  movq %rsp, %rbp
  .cfi_def_cfa_register %rbp
  subq $192, %rsp
  movaps %xmm0, 0(%rsp)
  movaps %xmm1, 16(%rsp)
  movaps %xmm2, 32(%rsp)
  movaps %xmm3, 48(%rsp)
  movaps %xmm4, 64(%rsp)
  movaps %xmm5, 80(%rsp)
  movaps %xmm6, 96(%rsp)
  movaps %xmm7, 112(%rsp)
  movq %rdi, 128(%rsp)
  movq %rsi, 136(%rsp)
  movq %rdx, 144(%rsp)
  movq %rcx, 152(%rsp)
  movq %r8, 160(%rsp)
  movq %r9, 168(%rsp)
  movq %rax, 176(%rsp)
.endm

.macro restore
  movq %rax, %r11
  movaps 0(%rsp), %xmm0
  movaps 16(%rsp), %xmm1
  movaps 32(%rsp), %xmm2
  movaps 48(%rsp), %xmm3
  movaps 64(%rsp), %xmm4
  movaps 80(%rsp), %xmm5
  movaps 96(%rsp), %xmm6
  movaps 112(%rsp), %xmm7
  movq 128(%rsp), %rdi
  movq 136(%rsp), %rsi
  movq 144(%rsp), %rdx
  movq 152(%rsp), %rcx
  movq 160(%rsp), %r8
  movq 168(%rsp), %r9
  movq 176(%rsp), %rax
  leave
  .cfi_def_cfa %rsp, 8
.endm

  .text
  .globl wispen_loader_msg_send
  .hidden wispen_loader_msg_send
  .type wispen_loader_msg_send, @function
wispen_loader_msg_send:
  begin
  call objc_msg_lookup@PLT
  restore
  jmp *%r11
  .cfi_endproc
  .size wispen_loader_msg_send, . - wispen_loader_msg_send

  /* The place for the result comes first. */
  .globl wispen_loader_msg_send_stret
  .hidden wispen_loader_msg_send_stret
  .type wispen_loader_msg_send_stret, @function
wispen_loader_msg_send_stret:
  begin
  movq %rsi, %rdi
  movq %rdx, %rsi
  call objc_msg_lookup@PLT
  restore
  jmp *%r11
  .cfi_endproc
  .size wispen_loader_msg_send_stret, . - wispen_loader_msg_send_stret

  /* The first argument points to the receiver and the class to begin at; the method gets the receiver. */
  .globl wispen_loader_msg_send_super
  .hidden wispen_loader_msg_send_super
  .type wispen_loader_msg_send_super, @function
wispen_loader_msg_send_super:
  begin
  call objc_msg_lookup_super@PLT
  restore
  movq (%rdi), %rdi
  jmp *%r11
  .cfi_endproc
  .size wispen_loader_msg_send_super, . - wispen_loader_msg_send_super

  .globl wispen_loader_msg_send_super_stret
  .hidden wispen_loader_msg_send_super_stret
  .type wispen_loader_msg_send_super_stret, @function
wispen_loader_msg_send_super_stret:
  begin
  movq %rsi, %rdi
  movq %rdx, %rsi
  call objc_msg_lookup_super@PLT
  restore
  movq (%rsi), %rsi
  jmp *%r11
  .cfi_endproc
  .size wispen_loader_msg_send_super_stret, . - wispen_loader_msg_send_super_stret

#elif defined(__aarch64__)

.macro begin
  .cfi_startproc
  stp x29, x30, [sp, #-224]!
  .cfi_def_cfa_offset 224
  .cfi_offset 29, -224
  .cfi_offset 30, -216
  mov x29, sp
  stp x0, x1, [sp, #16]
  stp x2, x3, [sp, #32]
  stp x4, x5, [sp, #48]
  stp x6, x7, [sp, #64]
  str x8, [sp, #80]
  stp q0, q1, [sp, #96]
  stp q2, q3, [sp, #128]
  stp q4, q5, [sp, #160]
  stp q6, q7, [sp, #192]
.endm

.macro restore
  mov x16, x0
  ldp x0, x1, [sp, #16]
  ldp x2, x3, [sp, #32]
  ldp x4, x5, [sp, #48]
  ldp x6, x7, [sp, #64]
  ldr x8, [sp, #80]
  ldp q0, q1, [sp, #96]
  ldp q2, q3, [sp, #128]
  ldp q4, q5, [sp, #160]
  ldp q6, q7, [sp, #192]
  ldp x29, x30, [sp], #224
  .cfi_restore 29
  .cfi_restore 30
  .cfi_def_cfa_offset 0
.endm

  .text
  .globl wispen_loader_msg_send
  .hidden wispen_loader_msg_send
  .type wispen_loader_msg_send, %function
wispen_loader_msg_send:
  begin
  bl objc_msg_lookup
  restore
  br x16
  .cfi_endproc
  .size wispen_loader_msg_send, . - wispen_loader_msg_send

  .globl wispen_loader_msg_send_super
  .hidden wispen_loader_msg_send_super
  .type wispen_loader_msg_send_super, %function
wispen_loader_msg_send_super:
  begin
  bl objc_msg_lookup_super
  restore
  ldr x0, [x0]
  br x16
  .cfi_endproc
  .size wispen_loader_msg_send_super, . - wispen_loader_msg_send_super

  /* Results in memory need no entry of their own: their place travels in a register of its own. */

  /* The phone puts the arguments behind the dots on the stack; the machine's own function is told so. */
  .globl wispen_loader_snprintf
  .hidden wispen_loader_snprintf
  .type wispen_loader_snprintf, %function
wispen_loader_snprintf:
  .cfi_startproc
  mov x3, sp
  b wispen_loader_vsnprintf
  .cfi_endproc
  .size wispen_loader_snprintf, . - wispen_loader_snprintf

  .globl wispen_loader_snprintf_l
  .hidden wispen_loader_snprintf_l
  .type wispen_loader_snprintf_l, %function
wispen_loader_snprintf_l:
  .cfi_startproc
  mov x4, sp
  b wispen_loader_vsnprintf_l
  .cfi_endproc
  .size wispen_loader_snprintf_l, . - wispen_loader_snprintf_l

#endif

  .section .note.GNU-stack, "", %progbits
