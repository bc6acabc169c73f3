# Sourced by what runs programs under Wine.
# shellcheck shell=bash

# Wine kills what has ended and then takes over half a second to leave; its own status is lost.
killed_at_its_end() { [ "$1" = 137 ]; } # STATUS
