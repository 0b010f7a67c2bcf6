* Orvane's board monitor: serves the host's frames over the SCI.
*
* The board: an MC68HC11E in special test mode (MODB low, MODA high), so the
* CPU fetches its vectors from $BFC0-$BFFF, out of this EPROM. A 9.8304 MHz
* crystal gives E = 2.4576 MHz; BAUD = $20 (prescaler 4, rate divider 1)
* runs the SCI at 2457600 / 16 / 4 = 38400 bit/s, 8 data bits, 1 stop bit
* (the reference manual's Tables 9-1 and 9-2).
*
* Memory of the monitor, which no user program may use:
*   $0000-$0008  save area: A, B, IX, IY, SP, CCR
*   $0009-$000C  code buffer, run by "S" and "X"
*   $000D        return point: an SWI that brings the CPU back here
*   $BA00-$BBFF  RAM: the frame being received and the monitor's stack
*   $BC00-$BFFF  this EPROM; $BFC0-$BFFF the vectors
* Entering the code buffer and coming back each use nine bytes just below
* the user's stack pointer, as an interrupt's frame would.
*
* Frames (letter, fields, a checksum that makes offsets 1 to the end sum to
* zero); a frame with a bad sum, or cut by a pause of 50 ms, gets no reply:
*   R addr count      ACK, count bytes (0 means 256), their negated sum
*   W addr n data     stores to RAM and registers, not the flash; ACK
*   P addr n data     programs the flash, elsewhere stores; ACK, NAK on failure
*   E E E             erases the flash; ACK, NAK on failure
*   S regs code(4)    runs the code buffer; ACK, the nine registers, their sum
*   X regs code(3)    ACK, then runs the code buffer (a jump to the program)
*
* The flash: an Am29F040B whose first 8 KB the board decodes at $E000-$FFFF.
* Its commands go to $555 and $2AA of the part, $E555 and $E2AA here. "E"
* erases sector 0, which holds the whole window: about 1 s, where a chip
* erase would take 8 s and outlast the host's 3 s.

* ---- the chip ----
BAUD     EQU     $102B
SCCR1    EQU     $102C
SCCR2    EQU     $102D
SCSR     EQU     $102E
SCDR     EQU     $102F
INIT     EQU     $103D
RDRF     EQU     $20             SCSR: a byte received
BAUDSET  EQU     $20             prescaler 4, divider 1: 38400 at E = 2.4576 MHz
SCION    EQU     $0C             SCCR2: transmitter and receiver on
OPSWI    EQU     $3F

* ---- what the host relies on ----
SAVE     EQU     $0000
CODE     EQU     $0009
RETPT    EQU     $000D
RESETSP  EQU     $00FF           the stack pointer the save area shows after a reset
RESETCC  EQU     $D0             S, X and I set
ACK      EQU     6
NAK      EQU     21

* ---- the flash ----
FLASH    EQU     $E000
UNLOCK1  EQU     $E555
UNLOCK2  EQU     $E2AA
DQ6      EQU     $40             toggles while the part is busy
DQ5      EQU     $20             set when the part gave up

* A silent line for GAPLOOPS turns of GETC's loop (16 E cycles each) is
* 50 ms at 2.4576 MHz: the frame in progress is dropped.
GAPLOOPS EQU     7680

* ---- the monitor's RAM ----
FRAME    EQU     $BA00           the frame being received: at most 4 + 255 + 1 bytes
FRMEND   EQU     $BB08           the address behind the frame's last byte
SUM      EQU     $BB0A           the running sum of offsets 1 and on
ENTRY    EQU     $BB0B           the letter's row of LETTERS
MSTACK   EQU     $BBFF

         ORG     $BC00

* ---- reset: the SCI, the save area, the report ----
RESET    LDS     #MSTACK
         LDAA    #BAUDSET
         STAA    BAUD
         CLR     SCCR1
         LDAA    #SCION
         STAA    SCCR2
         LDX     #RESETSA
         LDY     #SAVE
         LDAB    #9
RSA      LDAA    0,X
         STAA    0,Y
         INX
         INY
         DECB
         BNE     RSA
         LDX     #REPORT
RREP     LDAA    0,X
         BEQ     NEXTF
         BSR     PUTC
         INX
         BRA     RREP

* ---- the frame loop ----
NEXTF    LDS     #MSTACK
WAITL    BSR     GETW
         LDX     #LETTERS
FINDL    CMPA    0,X
         BEQ     FOUNDL
         LDAB    #4
         ABX
         CPX     #LETEND
         BNE     FINDL
         BRA     WAITL           not a command letter: ignored
FOUNDL   STAA    FRAME
         STX     ENTRY
         LDAB    1,X             the length its letter gives
         CLRA
         ADDD    #FRAME
         STD     FRMEND
         CLR     SUM
         LDX     #FRAME+1
GETB     BSR     GETC
         BCS     WAITL           a pause: the frame is lost
         STAA    0,X
         ADDA    SUM
         STAA    SUM
         INX
         CPX     #FRAME+4        the count of "W" and "P" just came
         BNE     HAVLEN
         LDAA    FRAME
         CMPA    #'W
         BEQ     DATLEN
         CMPA    #'P
         BNE     HAVLEN
DATLEN   LDAB    FRAME+3
         CLRA
         ADDD    #FRAME+5
         STD     FRMEND
HAVLEN   CPX     FRMEND
         BNE     GETB
         TST     SUM
         BNE     WAITL           a bad sum: dropped without a word
         LDX     ENTRY
         LDX     2,X
         JMP     0,X             the letter's handler

* ---- the SCI ----
* PUTC sends A; keeps every register.
PUTC     TST     SCSR
         BPL     PUTC            TDRE is bit 7
         STAA    SCDR
         RTS

* GETW waits for a byte as long as it takes: A.
GETW     LDAA    SCSR
         BITA    #RDRF
         BEQ     GETW
         LDAA    SCDR
         RTS

* GETC: the next byte in A and carry clear, or carry set after a pause.
GETC     LDY     #GAPLOOPS
GETC1    LDAA    SCSR
         BITA    #RDRF
         BNE     GETC2
         DEY
         BNE     GETC1
         SEC
         RTS
GETC2    LDAA    SCDR
         CLC
         RTS

* ---- R: the bytes and their checksum ----
DOREAD   LDX     FRAME+1
         LDAB    FRAME+3         0 is 256: DECB comes round
         LDAA    #ACK
         BSR     PUTC
         CLR     SUM
RDL      LDAA    0,X
         BSR     PUTC
         ADDA    SUM
         STAA    SUM
         INX
         DECB
         BNE     RDL
         LDAA    SUM
         NEGA
SENDA    BSR     PUTC
         JMP     NEXTF

* ---- W and P: the data, stored or programmed ----
DOWRITE  CLR     SUM             SUM now: 0 stores, 1 programs
         BRA     STORES
DOPROG   LDAA    #1
         STAA    SUM
STORES   LDX     FRAME+1
         LDY     #FRAME+4
         LDAB    FRAME+3
         BEQ     STORED
STL      LDAA    0,Y
         CPX     #FLASH
         BLO     STPLAIN
         TST     SUM
         BEQ     STNEXT          a write leaves the flash alone
         PSHB
         BSR     FPROG
         PULB
         BCS     FAILED
         BRA     STNEXT
STPLAIN  BSR     STORE
STNEXT   INX
         INY
         DECB
         BNE     STL
STORED   LDAA    #ACK
         BRA     SENDA
FAILED   LDAA    #NAK
         BRA     SENDA
NOTERASE JMP     NEXTF

* STORE puts A at X, except where a store would cut the monitor's line
* (the SCI's status and data) or move the register block (INIT, which
* special test mode leaves open).
STORE    CPX     #SCSR
         BEQ     STSKIP
         CPX     #SCDR
         BEQ     STSKIP
         CPX     #INIT
         BEQ     STSKIP
         STAA    0,X
STSKIP   RTS

* ---- E: the whole flash ----
DOERASE  LDD     FRAME+1         the letter three times, or it is no erase
         CPD     #'E*256+'E
         BNE     NOTERASE
         LDAA    #$80
         BSR     FCMD
         LDAA    #$AA            sector erase: the window lies in sector 0
         STAA    UNLOCK1
         LDAA    #$55
         STAA    UNLOCK2
         LDX     #FLASH
         LDAA    #$30
         STAA    0,X
         BSR     FWAIT
         LDAA    SCSR            what came meanwhile is dropped
         LDAA    SCDR
         BCS     FAILED
         BRA     STORED

* FCMD: the unlock cycles, then the command in A.
FCMD     PSHA
         LDAA    #$AA
         STAA    UNLOCK1
         LDAA    #$55
         STAA    UNLOCK2
         PULA
         STAA    UNLOCK1
         RTS

* FPROG programs A at X (in the flash); carry set when the part failed.
FPROG    PSHA
         LDAA    #$A0
         BSR     FCMD
         PULA
         STAA    0,X
* FWAIT waits while the part is busy, read at X: DQ6 toggles on each read.
* When DQ5 rises and DQ6 still toggles the operation failed: the reset
* command takes the part back to reading; carry set.
FWAIT    LDAA    0,X
         EORA    0,X
         BITA    #DQ6
         BEQ     FDONE
         LDAA    0,X
         BITA    #DQ5
         BEQ     FWAIT
         LDAA    0,X
         EORA    0,X
         BITA    #DQ6
         BEQ     FDONE
         LDAA    #$F0
         STAA    FLASH
         SEC
         RTS
FDONE    CLC
         RTS

* ---- S and X: the code buffer with the host's registers ----
* Frame offsets 1 to 13 become $0000-$000C, the return point gets its SWI,
* and an RTI from a frame built below the user's stack pointer loads every
* register and starts at $0009.
DORUN    LDX     #FRAME+1
         LDY     #SAVE
         LDAB    #13
RUNL     LDAA    0,X
         STAA    0,Y
         INX
         INY
         DECB
         BNE     RUNL
         LDAA    #OPSWI
         STAA    RETPT
         LDAA    FRAME
         CMPA    #'X
         BNE     ENTER
         LDAA    #ACK            "X" is answered before the program starts
         BSR     PUTC2
ENTER    LDD     SAVE+6
         SUBD    #8
         XGDX                    X: the frame's first byte, SP - 8
         LDAA    SAVE+8
         STAA    0,X             CCR
         LDD     SAVE            A, B
         STAB    1,X
         STAA    2,X
         LDD     SAVE+2
         STD     3,X             IX
         LDD     SAVE+4
         STD     5,X             IY
         LDD     #CODE
         STD     7,X             PC
         TXS                     SP: the frame's first byte - 1
         RTI

PUTC2    JMP     PUTC

* ---- SWI: the return point, or the user's own SWI ----
* The frame the SWI stacked lies above the four bytes pushed here; its PC is
* RETPT + 1 when the code buffer has come back.
SWIENT   PSHA
         TPA
         PSHA
         PSHX
         TSX
         LDX     11,X            the stacked PC
         CPX     #RETPT+1
         BEQ     BACK
         PULX
         PULA
         TAP
         PULA
         JSR     FORWARD
         FDB     $FFF6

* The registers from the SWI's frame into the save area, then the reply.
BACK     TSX                     X + 4: the frame: CCR, B, A, IX, IY, PC
         LDAA    6,X
         STAA    SAVE
         LDAA    5,X
         STAA    SAVE+1
         LDD     7,X
         STD     SAVE+2
         LDD     9,X
         STD     SAVE+4
         XGDX
         ADDD    #12             the user's SP: above the whole frame
         STD     SAVE+6
         TSX
         LDAA    4,X
         STAA    SAVE+8
         LDS     #MSTACK
         LDAA    #ACK
         BSR     PUTC2
         CLR     SUM
         LDX     #SAVE
BKL      LDAA    0,X
         BSR     PUTC2
         ADDA    SUM
         STAA    SUM
         INX
         CPX     #SAVE+9
         BNE     BKL
         LDAA    SUM
         NEGA
         JMP     SENDA

* ---- an illegal opcode ----
* On to the user's handler; while the flash has none (erased) the opcode's
* byte is passed over, as the built-in monitor of hc11board does, rather
* than a jump to $FFFF.
VILL     PSHA
         TPA
         PSHA
         PSHX
         LDX     $FFF8
         CPX     #$FFFF
         BEQ     VSKIP
         PULX
         PULA
         TAP
         PULA
         JSR     FORWARD
         FDB     $FFF8
VSKIP    TSX                     X + 4: the trap's frame, its PC at 11,X
         LDD     11,X
         ADDD    #1
         STD     11,X
         PULX
         PULA
         PULA
         RTI

* ---- the other vectors: on to the user's, in the flash ----
* Each entry calls FORWARD with the address of the user's vector behind the
* call. FORWARD puts that vector's handler where its return address was and
* returns into the handler with every register as the interrupt left it.
FORWARD  PSHX
         PSHA
         TPA
         PSHA
         PSHB                    the stack: B, CCR, A, IX, the return address
         TSX
         LDX     5,X             the word behind the call
         LDX     0,X             the user's vector
         LDD     0,X             its handler
         TSX
         STD     5,X
         PULB
         PULA
         TAP
         PULA
         PULX
         RTS

VSCI     JSR     FORWARD
         FDB     $FFD6
VSPI     JSR     FORWARD
         FDB     $FFD8
VPAI     JSR     FORWARD
         FDB     $FFDA
VPAO     JSR     FORWARD
         FDB     $FFDC
VTOF     JSR     FORWARD
         FDB     $FFDE
VOC5     JSR     FORWARD
         FDB     $FFE0
VOC4     JSR     FORWARD
         FDB     $FFE2
VOC3     JSR     FORWARD
         FDB     $FFE4
VOC2     JSR     FORWARD
         FDB     $FFE6
VOC1     JSR     FORWARD
         FDB     $FFE8
VIC3     JSR     FORWARD
         FDB     $FFEA
VIC2     JSR     FORWARD
         FDB     $FFEC
VIC1     JSR     FORWARD
         FDB     $FFEE
VRTI     JSR     FORWARD
         FDB     $FFF0
VIRQ     JSR     FORWARD
         FDB     $FFF2
VXIRQ    JSR     FORWARD
         FDB     $FFF4
VCOP     JSR     FORWARD
         FDB     $FFFA
VCMF     JSR     FORWARD
         FDB     $FFFC

* ---- tables ----
* Command letters, their frames' lengths ("W" and "P" before their data)
* and their handlers.
LETTERS  FCB     'R,5
         FDB     DOREAD
         FCB     'W,5
         FDB     DOWRITE
         FCB     'P,5
         FDB     DOPROG
         FCB     'E,4
         FDB     DOERASE
         FCB     'S,15
         FDB     DORUN
         FCB     'X,14
         FDB     DORUN
LETEND   EQU     *
RESETSA  FCB     0,0,0,0,0,0,RESETSP/256,RESETSP&255,RESETCC
* A new line, the prompt, and the three letters by which the host knows a reset.
REPORT   FCB     13,10,'>,'B,'B,'B,0

* ---- the vectors of special test mode ----
         ORG     $BFD6
         FDB     VSCI,VSPI,VPAI,VPAO,VTOF,VOC5,VOC4,VOC3,VOC2,VOC1
         FDB     VIC3,VIC2,VIC1,VRTI,VIRQ,VXIRQ,SWIENT,VILL,VCOP,VCMF
         FDB     RESET
         END
