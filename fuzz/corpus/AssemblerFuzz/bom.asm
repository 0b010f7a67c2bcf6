* counter
 ORG $E000
 NOP
