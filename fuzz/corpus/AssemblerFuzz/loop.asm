* counts on port B
PORTB   EQU  $1004
        ORG  $E000
START   LDS  #$00FF
        CLRA
LOOP    STAA PORTB
        INCA
        BSR  DELAY
        BRA  LOOP
DELAY   LDX  #1000
WAIT    DEX
        BNE  WAIT
        RTS
TABLE   FCB  1,2,$FF,%1010
        FDB  START,TABLE
        FCC  "HI"
        RMB  4
        ORG  $FFFE
        FDB  START
