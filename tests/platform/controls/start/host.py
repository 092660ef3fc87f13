"""A Python host of the component in argv[1]: shows windows from two threads and ends without clean-up."""
import ctypes
import locale
import sys
import threading

guest = ctypes.CDLL(sys.argv[1])
guest.guestError.restype = ctypes.c_char_p


def show(who):
    print(who, guest.guestShowWindow(150) > 0, guest.guestError().decode(), flush=True)


before = locale.setlocale(locale.LC_ALL)
show("main")
worker = threading.Thread(target=show, args=("worker",))
worker.start()
worker.join()
show("main")
print("locale kept", before == locale.setlocale(locale.LC_ALL), flush=True)
