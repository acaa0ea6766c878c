#include "Rack.h"

namespace vornsim
{

namespace
{

constexpr std::string_view Demo = R"(
port 2 speed=9600

module 7203   address=01 range=0E low=+150.00 high=+600.00 alarm=1
module 7203D  address=02 range=05 checksum=yes
module 7206   address=03 range=08 family=no
module 7209   address=04 range=23
module 7212D  address=05 range=09 mapping=1 outputlow=-100.00 outputhigh=+100.00
module 7218   address=06 range=02 excitation=05.000
module 7221   address=07 range=08 mask=BF
module 7224   address=08 range=0F
module 7224M  address=09 range=05 memory=FF021003C records=400 eventrecords=60
module 7231   address=0A range=32 format=14 output=05.500
module 7252   address=0B
module 7256   address=0C
module 7258   address=0D
module 7272   address=0E outputs=05
module 7282   address=0F preset0=00000100 alarm0=1
module 7282D  address=10 preset0=00000100 preset1=00000200 alarm=2
module 7282N  address=11 range=51
module 7221P  address=12

module 3900E  address=20
slot 0 3921   range=22 highenabled1=1 high1=120
slot 1 3923   range=09 mask=FB
slot 2 3923H  range0=00 range1=03 range2=08 range3=0A
slot 3 3925   range=0E lowenabled0=1 low0=150 lowmode0=L lowout0=S6C3
slot 4 3931   range1=31 range2=32 format2=10 output2=05.000
slot 5 3942   directions=F00F faults=0002
slot 6 3951   outputs=0155
slot 7 3962   range=01 rate1=250 running2=0

module 3900   address=21 checksum=yes
slot 0 3944
slot 1 3946
slot 2 3948   outputs=0F faults=10
slot 3 3953   outputs=2A
slot 4 3957   outputs=81

port 4 speed=9600

module 7252   address=05 init=yes checksum=yes
module 7216   address=01 range=22 range3=24 mask=2F wires=02
module 7221P  address=02 range=08 range1=0C range2=07 mask=7F
module 7224P  address=03 range=0F range6=06 mask=BF wires=04
module 7227   address=04 range=05 range1=0E range2=0F mask=F7 wires=80
module 7234   address=05 range=30 range1=31 range2=32 startup=+10.000 emergency1=1 emergency2=1 inputs=2
module 7254   address=06 family=no
module 7262   address=07 outputs=A5
module 7276   address=08 outputs=3C watchdog=0600
module 7206   address=10 baud=19200

# Another master talks to two modules: something to watch for a data scope.
port 6 speed=9600 pace=yes

module 7221   address=0A
module 7272   address=0B
master every=250 send=$0AM,#0A0,#0A1,$0B6
)";

} // namespace

Rack DemoRack()
{
    return ParseRack(Demo);
}

} // namespace vornsim
