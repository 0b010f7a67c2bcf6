* Záhler þ
LOOP  INC  $1004
      BRA  LOOP
