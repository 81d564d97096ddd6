#!/usr/bin/env bash
# Rebuilds samples/demo.k720, a programmed 136-174 MHz radio to try the
# program on, with zr310-cli from a build tree:
#   samples/make-demo.sh build/src/cli/zr310-cli
set -euo pipefail
cli=${1:?path to zr310-cli}
out=$(dirname "$0")/demo.k720
"$cli" new "$out" --force
"$cli" set "$out" CboBand="136 - 174MHz" CboSQ=3 CboScan=Carrier CboPriorityCH=CH1 \
    CboRing=On CboBatFunction=On CboBakScan=1.0sec CboScanHold=2.0sec CboTOTAgain=5sec \
    user_text="ZR-310 demo radio"
freqs=(145.50000 145.52500 146.52000 147.00000 151.62500 154.57000 156.80000 162.55000)
for i in "${!freqs[@]}"; do
    n=$((i + 1))
    "$cli" set "$out" ch$n.close=false ch$n.no_tx=false ch$n.rx_freq=${freqs[$i]} \
        ch$n.tx_freq=${freqs[$i]}
done
"$cli" set "$out" ch1.rx_tone="CTC 88.5" ch1.tx_tone="CTC 88.5" ch2.rx_tone="DCS 023" \
    ch2.tx_tone="DCS 023" ch4.tx_freq=147.60000 ch4.tx_tone="CTC 100.0" ch5.power=Low \
    ch6.bandwidth=Narrow ch7.scan=Del ch7.busy_lock=On ch8.no_tx=true \
    tch1.close=false tch1.no_tx=false tch1.rx_freq=155.00000 tch1.tx_freq=155.00000 \
    tuning.low_battery=120 tuning.squelch9=96 tuning.squelch3=40 \
    tuning.ctcss_deviation=70 tuning.cdcss_deviation=75
