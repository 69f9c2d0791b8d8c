"""The stand-in for logind on the private desktop: dbusmock's own, with inhibitors that report which process and
user hold them. Tests cause a sleep through EmitSignal of the interface org.freedesktop.DBus.Mock."""

import os

import dbus
from dbusmock.templates import logind as base
from gi.repository import GLib

BUS_NAME = base.BUS_NAME
MAIN_OBJ = base.MAIN_OBJ
MAIN_IFACE = base.MAIN_IFACE
SYSTEM_BUS = base.SYSTEM_BUS

ListUsers = base.ListUsers
ListSessions = base.ListSessions
AddSeat = base.AddSeat
AddUser = base.AddUser
AddSession = base.AddSession

load = base.load

inhibitors = {}


@dbus.service.method(MAIN_IFACE, in_signature='ssss', out_signature='h', sender_keyword='sender',
                     connection_keyword='connection')
def Inhibit(_, what, who, why, mode, sender, connection):
    bus = connection.get_object('org.freedesktop.DBus', '/org/freedesktop/DBus')
    pid = bus.GetConnectionUnixProcessID(sender)
    uid = bus.GetConnectionUnixUser(sender)

    ours, holders = os.pipe2(os.O_CLOEXEC)
    inhibitors[ours] = (what, who, why, mode, uid, pid)

    # This end sees a close when the last process that has the other end closes it.
    def released(descriptor, _condition):
        del inhibitors[descriptor]
        os.close(descriptor)
        return GLib.SOURCE_REMOVE

    GLib.unix_fd_add_full(GLib.PRIORITY_HIGH, ours, GLib.IO_HUP, released)
    answer = dbus.types.UnixFd(holders)
    os.close(holders)
    return answer


@dbus.service.method(MAIN_IFACE, in_signature='', out_signature='a(ssssuu)')
def ListInhibitors(_):
    return list(inhibitors.values())
