* Zähler auf Port B
LOOP  INC  $1004
      BRA  LOOP
