"""A stand-in for ModemManager with one modem, its SIM and its bearer, which NetworkManager takes for real.

A template for python-dbusmock: python3 -m dbusmock --system --template ./modemmanager_mock.py
The modem's data goes through the interface "wwan0", 10.79.0.2. To change things, call on the path
/org/freedesktop/ModemManager1 and the interface org.freedesktop.DBus.Mock:
  AddModem()  RemoveModem()  SetNetwork(u registration, s operator)  SetSim(s identifier)
  SetStats(t received, t sent, u seconds), which is not announced  DropConnection()
"""

import dbus
from dbusmock import MOCK_IFACE, OBJECT_MANAGER_IFACE, mockobject

BUS_NAME = "org.freedesktop.ModemManager1"
MAIN_OBJ = "/org/freedesktop/ModemManager1"
MAIN_IFACE = BUS_NAME
SYSTEM_BUS = True
IS_OBJECT_MANAGER = False  # the mock's own would list SIM and bearer too; only modems are listed

MODEM = BUS_NAME + ".Modem"
SIMPLE = MODEM + ".Simple"
MODEM_3GPP = MODEM + ".Modem3gpp"
BEARER = BUS_NAME + ".Bearer"
SIM = BUS_NAME + ".Sim"

MODEM_PATH = MAIN_OBJ + "/Modem/0"
BEARER_PATH = MAIN_OBJ + "/Bearer/0"
SIM_PATH = MAIN_OBJ + "/SIM/0"

REGISTERED, DISCONNECTING, CONNECTING, CONNECTED = 8, 9, 10, 11
ENABLED_BELOW = 3
PORT_NET, PORT_AT = 2, 3
STATIC_ADDRESS = 2

OBJECTS = mockobject.objects


def unsigned(number):
    return dbus.UInt32(number)


def dictionary(values):
    return dbus.Dictionary(values, signature="sv")


def pairs(values):
    return dbus.Array([dbus.Struct(value, signature="su") for value in values], signature="(su)")


def change(path, interface, values, announce=True):
    """The mock's own UpdateProperties carries neither booleans nor dictionaries."""
    target = OBJECTS[path]
    target.props[interface].update(values)
    if announce:
        target.EmitSignal(
            dbus.PROPERTIES_IFACE,
            "PropertiesChanged",
            "sa{sv}as",
            [interface, dictionary(values), dbus.Array([], signature="s")],
        )


def figures(received=0, sent=0, seconds=0):
    return dictionary(
        {
            "rx-bytes": dbus.UInt64(received),
            "tx-bytes": dbus.UInt64(sent),
            "duration": unsigned(seconds),
            "attempts": unsigned(1),
            "failed-attempts": unsigned(0),
        }
    )


def no_address():
    return dictionary({"method": unsigned(0)})


def address():
    return dictionary(
        {
            "method": unsigned(STATIC_ADDRESS),
            "address": "10.79.0.2",
            "prefix": unsigned(24),
            "gateway": "10.79.0.1",
            "mtu": unsigned(1500),
        }
    )


def modem_properties():
    return {
        "Sim": dbus.ObjectPath(SIM_PATH),
        "SimSlots": dbus.Array([], signature="o"),
        "PrimarySimSlot": unsigned(0),
        "Bearers": dbus.Array([], signature="o"),
        "SupportedCapabilities": dbus.Array([unsigned(4)], signature="u"),
        "CurrentCapabilities": unsigned(4),
        "MaxBearers": unsigned(1),
        "MaxActiveBearers": unsigned(1),
        "Manufacturer": "Example",
        "Model": "Stick 1",
        "Revision": "1.0",
        "HardwareRevision": "",
        "DeviceIdentifier": "device-1",
        "Device": "/virtual/stick",
        "Drivers": dbus.Array(["virtual"], signature="s"),
        "Plugin": "generic",
        "PrimaryPort": "ttyUSB2",
        "Ports": pairs([("ttyUSB2", unsigned(PORT_AT)), ("wwan0", unsigned(PORT_NET))]),
        "EquipmentIdentifier": "490154203237518",
        "UnlockRequired": unsigned(1),
        "UnlockRetries": dbus.Dictionary({unsigned(2): unsigned(3)}, signature="uu"),
        "State": dbus.Int32(REGISTERED),
        "StateFailedReason": unsigned(0),
        "AccessTechnologies": unsigned(32),
        "SignalQuality": dbus.Struct((unsigned(80), True), signature="ub"),
        "OwnNumbers": dbus.Array([], signature="s"),
        "PowerState": unsigned(3),
        "SupportedModes": dbus.Array([dbus.Struct((unsigned(6), unsigned(0)), signature="uu")], signature="(uu)"),
        "CurrentModes": dbus.Struct((unsigned(6), unsigned(0)), signature="uu"),
        "SupportedBands": dbus.Array([unsigned(0)], signature="u"),
        "CurrentBands": dbus.Array([unsigned(0)], signature="u"),
        "SupportedIpFamilies": unsigned(1),
    }


def network_properties():
    return dictionary(
        {
            "Imei": "490154203237518",
            "RegistrationState": unsigned(1),
            "OperatorCode": "00101",
            "OperatorName": "Test Net",
            "EnabledFacilityLocks": unsigned(0),
            "SubscriptionState": unsigned(0),
            "EpsUeModeOperation": unsigned(0),
            "Pco": dbus.Array([], signature="(ubay)"),
            "InitialEpsBearer": dbus.ObjectPath("/"),
            "InitialEpsBearerSettings": dictionary({}),
            "PacketServiceState": unsigned(2),
        }
    )


def sim_properties():
    return {
        "Active": True,
        "SimIdentifier": "89000123456789012341",
        "Imsi": "001010123456789",
        "Eid": "",
        "OperatorIdentifier": "00101",
        "OperatorName": "Test",
        "EmergencyNumbers": dbus.Array([], signature="s"),
    }


def bearer_properties(settings):
    return {
        "Interface": "",
        "Connected": False,
        "Suspended": False,
        "Multiplexed": False,
        "Ip4Config": no_address(),
        "Ip6Config": no_address(),
        "Stats": figures(),
        "IpTimeout": unsigned(20),
        "BearerType": unsigned(1),
        "ProfileId": dbus.Int32(1),
        "Properties": dictionary(settings or {"apn": ""}),
    }


def call(method, arguments=""):
    return 'objects["%s"].%s(%s)' % (MAIN_OBJ, method, arguments)


def plug_in():
    main = OBJECTS[MAIN_OBJ]
    main.AddObject(SIM_PATH, SIM, sim_properties(), [])
    methods = [
        ("Enable", "b", "", call("SetState", "%d if args[0] else %d" % (REGISTERED, ENABLED_BELOW))),
        ("SetPowerState", "u", "", ""),
        ("ListBearers", "", "ao", 'ret = self.Get("%s", "Bearers")' % MODEM),
        ("DeleteBearer", "o", "", call("RemoveBearer")),
        ("Reset", "", "", ""),
    ]
    main.AddObject(MODEM_PATH, MODEM, modem_properties(), methods)
    modem = OBJECTS[MODEM_PATH]
    modem.AddProperties(MODEM_3GPP, network_properties())
    modem.props[SIMPLE] = {}  # listed although it has no properties: clients look for it
    status = '{"state": self.Get("%s", "State"), "m3gpp-registration-state": dbus.UInt32(1)}' % MODEM
    modem.AddMethods(
        SIMPLE,
        [
            ("Connect", "a{sv}", "o", "ret = " + call("ConnectBearer", "args[0]")),
            ("Disconnect", "o", "", call("DropConnection")),
            ("GetStatus", "", "a{sv}", "ret = " + status),
        ],
    )


def load(mock, _parameters):
    OBJECTS[MAIN_OBJ] = mock
    mock.AddProperties(MAIN_IFACE, dictionary({"Version": "1.20.4"}))
    mock.AddMethods(MAIN_IFACE, [("ScanDevices", "", "", ""), ("InhibitDevice", "sb", "", "")])
    plug_in()  # without a signal: a client that lists the objects would see it twice


@dbus.service.method(OBJECT_MANAGER_IFACE, in_signature="", out_signature="a{oa{sa{sv}}}")
def GetManagedObjects(_self):
    found = {path: OBJECTS[path].props for path in (MODEM_PATH,) if path in OBJECTS}
    return dbus.Dictionary(found, signature="oa{sa{sv}}")


@dbus.service.method(MOCK_IFACE, in_signature="", out_signature="")
def AddModem(self):
    plug_in()
    values = [dbus.ObjectPath(MODEM_PATH), dbus.Dictionary(OBJECTS[MODEM_PATH].props, signature="sa{sv}")]
    self.EmitSignal(OBJECT_MANAGER_IFACE, "InterfacesAdded", "oa{sa{sv}}", values)


@dbus.service.method(MOCK_IFACE, in_signature="", out_signature="")
def RemoveModem(self):
    interfaces = dbus.Array(list(OBJECTS[MODEM_PATH].props), signature="s")
    self.EmitSignal(OBJECT_MANAGER_IFACE, "InterfacesRemoved", "oas", [dbus.ObjectPath(MODEM_PATH), interfaces])
    for path in (BEARER_PATH, MODEM_PATH, SIM_PATH):
        if path in OBJECTS:
            self.RemoveObject(path)


@dbus.service.method(MOCK_IFACE, in_signature="i", out_signature="")
def SetState(_self, state):
    old = OBJECTS[MODEM_PATH].Get(MODEM, "State")
    change(MODEM_PATH, MODEM, {"State": dbus.Int32(state)})
    values = [dbus.Int32(old), dbus.Int32(state), unsigned(1)]
    OBJECTS[MODEM_PATH].EmitSignal(MODEM, "StateChanged", "iiu", values)


@dbus.service.method(MOCK_IFACE, in_signature="a{sv}", out_signature="o")
def ConnectBearer(self, settings):
    SetState(self, CONNECTING)
    if BEARER_PATH not in OBJECTS:
        methods = [("Connect", "", "", ""), ("Disconnect", "", "", call("DropConnection"))]
        self.AddObject(BEARER_PATH, BEARER, bearer_properties(settings), methods)
    values = {"Connected": True, "Interface": "wwan0", "Ip4Config": address(), "Stats": figures()}
    change(BEARER_PATH, BEARER, values)
    change(MODEM_PATH, MODEM, {"Bearers": dbus.Array([BEARER_PATH], signature="o")})
    SetState(self, CONNECTED)
    return dbus.ObjectPath(BEARER_PATH)


@dbus.service.method(MOCK_IFACE, in_signature="", out_signature="")
def DropConnection(self):
    if BEARER_PATH in OBJECTS and OBJECTS[BEARER_PATH].Get(BEARER, "Connected"):
        SetState(self, DISCONNECTING)
        change(BEARER_PATH, BEARER, {"Connected": False, "Interface": "", "Ip4Config": no_address()})
        SetState(self, REGISTERED)


@dbus.service.method(MOCK_IFACE, in_signature="", out_signature="")
def RemoveBearer(self):
    DropConnection(self)
    if BEARER_PATH in OBJECTS:
        change(MODEM_PATH, MODEM, {"Bearers": dbus.Array([], signature="o")})
        self.RemoveObject(BEARER_PATH)


@dbus.service.method(MOCK_IFACE, in_signature="us", out_signature="")
def SetNetwork(_self, registration, operator):
    change(MODEM_PATH, MODEM_3GPP, {"RegistrationState": unsigned(registration), "OperatorName": operator})


@dbus.service.method(MOCK_IFACE, in_signature="s", out_signature="")
def SetSim(_self, identifier):
    change(SIM_PATH, SIM, {"SimIdentifier": identifier})


@dbus.service.method(MOCK_IFACE, in_signature="ttu", out_signature="")
def SetStats(_self, received, sent, seconds):
    change(BEARER_PATH, BEARER, {"Stats": figures(received, sent, seconds)}, announce=False)
